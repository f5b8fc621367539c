#include "tool/manual/key_items.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

#include "tool/keys/key_page.h"
#include "tool/keys/key_table.h"
#include "tool/manual/page_parts.h"
#include "tool/manual/roff_text.h"

namespace tool {

namespace {

// "id, 0 to 2147483647": of what kind it is and what may be written plainly.
std::string Form(const Key& key)
{
    std::string form = key.kindText;
    const std::string range = RangeWords(key);
    if (!range.empty()) {
        form += ": " + range;
    }
    form.erase(std::remove(form.begin(), form.end(), '`'), form.end());
    return form;
}

// What the library makes of what is not written plainly.
std::string Outcomes(const Key& key)
{
    const char* warning = key.warnsOfEmpty ? " (w)" : "";
    const auto words = [&key](const char* json) {
        return key.emptyText != nullptr ? std::string(key.emptyText) : ValueWords(key, json);
    };
    const std::string empty = words(key.empty);
    const std::string misfit = words(key.misfit);
    std::string text = empty == misfit
                           ? fmt::format("Empty or wrong kind: {}{}", empty, warning)
                           : fmt::format("Empty: {}{}; wrong kind: {}{}", empty, warning, misfit, warning);
    if (*key.beyond != '\0') {
        text += fmt::format("; {}", key.beyond);
    }
    return text;
}

void AddKey(RoffPage& part, const Key& key)
{
    part.Item(fmt::format("{} ({})", RoffBold(key.name), RoffLiteral(Form(key))), Sentence(key.meaning));
    part.AddToItem(fmt::format("Default: {}. {}", DefaultWords(key), Sentence(Outcomes(key))));
}

std::string Items(FileKind kind)
{
    RoffPage part;
    for (const Key& key : KeysOf(kind)) {
        AddKey(part, key);
    }
    return part.Text();
}

// By group, in the order of each one's first key.
std::string StartupItems()
{
    RoffPage part;
    std::vector<KeyGroup> groups;
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        if (std::find(groups.begin(), groups.end(), key.group) == groups.end()) {
            groups.push_back(key.group);
        }
    }
    for (const KeyGroup group : groups) {
        part.Subsection(TitleOf(group));
        for (const Key& key : KeysOf(FileKind::STARTUP)) {
            if (key.group == group) {
                AddKey(part, key);
            }
        }
    }
    return part.Text();
}

} // namespace

std::map<std::string, std::string> KeyParts()
{
    return {{"TOP-LEVEL KEYS", Items(FileKind::TOP_LEVEL)},
            {"STARTUP KEYS", StartupItems()},
            {"REPLACE-DATA KEYS", Items(FileKind::REPLACE)}};
}

} // namespace tool
