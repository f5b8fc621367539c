#include "tool/keys/key_page.h"

#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

namespace tool {

namespace {

std::string Cell(const Key& key, const char* json, const char* words)
{
    if (words != nullptr) {
        return words;
    }
    const std::string text = ValueWords(key, json);
    const bool differs = key.absentText == nullptr && std::string_view(json) != key.absent;
    return differs ? fmt::format("**{}**", text) : text;
}

} // namespace

std::string DefaultWords(const Key& key)
{
    if (key.kind == KeyKind::DEVICE_ID) {
        return "-1 and `-1`";
    }
    std::string words = ValueWords(key, key.absent);
    // The strongest of the keys that decide it instead, where that is a number, too.
    if (key.standIns.size() > 1) {
        return fmt::format("`{}` if written, else {}", key.standIns.front(), words);
    }
    return words == "none" || words == "empty text" ? "empty" : words;
}

std::string RangeWords(const Key& key)
{
    return key.kind == KeyKind::POLICY ? fmt::format("`{}`", fmt::join(key.words, "`, `")) : key.range;
}

std::string ValueWords(const Key& key, const char* json)
{
    const Json value = Json::parse(json);
    if (value.is_string()) {
        const std::string text = value.get<std::string>();
        return text.empty() ? "empty text" : fmt::format("`{}`", text);
    }
    if (IsList(key.kind) || IsMap(key.kind)) {
        return "none";
    }
    return value.dump();
}

std::string KeyTable(FileKind kind)
{
    std::string page = "| key | kind | default | range | meaning |\n|---|---|---|---|---|\n";
    for (const Key& key : KeysOf(kind)) {
        page += fmt::format("| `{}` | {} | {} | {} | {} |\n", key.name, key.kindText, DefaultWords(key),
                            RangeWords(key), key.meaning);
    }
    return page;
}

std::string OutcomeTable()
{
    std::string page =
        "| key | left out | empty | wrong kind | extreme or unusable |\n|---|---|---|---|---|\n";
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        const char* warning = key.warnsOfEmpty ? " (w)" : "";
        page += fmt::format("| `{}` | {} | {}{} | {}{} | {} |\n", key.name,
                            Cell(key, key.absent, key.absentText), Cell(key, key.empty, key.emptyText),
                            warning, Cell(key, key.misfit, key.emptyText), warning, key.beyond);
    }
    return page;
}

} // namespace tool
