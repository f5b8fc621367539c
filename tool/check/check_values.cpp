#include "tool/check/check_values.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include "tool/check/check_numbers.h"
#include "tool/check/keyed_mapping.h"
#include "tool/keys/library_values.h"
#include "tool/rules/rules_values.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

std::string Lower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) {
        return c < 0x80 ? static_cast<char>(std::tolower(c)) : static_cast<char>(c);
    });
    return lower;
}

std::string_view TrimBlanks(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(" \t\n");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(" \t\n") + 1 - begin);
}

// What other programs take for true or false.
const char* BooleanMeantBy(const std::string& lower)
{
    constexpr std::array<std::string_view, 5> kYes = {"yes", "on", "y", "1", "t"};
    constexpr std::array<std::string_view, 5> kNo = {"no", "off", "n", "0", "f"};
    if (std::find(kYes.begin(), kYes.end(), lower) != kYes.end()) {
        return "write \"true\"";
    }
    return std::find(kNo.begin(), kNo.end(), lower) != kNo.end() ? "write \"false\""
                                                                 : "write \"true\" or \"false\"";
}

std::vector<std::string> Words(const Key& key)
{
    return {key.words.begin(), key.words.end()};
}

std::string OneOf(const Key& key, std::string_view text)
{
    const std::string nearest = Nearest(text, Words(key));
    return nearest.empty() ? fmt::format("write one of {}", fmt::join(key.words, ", "))
                           : fmt::format("write \"{}\"", nearest);
}

class ValueCheck {
public:
    ValueCheck(const Configuration& configuration, Findings& findings)
        : findings_(findings), values_(configuration), numbers_(values_, findings)
    {}

    void Check(const KeyedMapping& entry)
    {
        std::vector<bool> seen(KeysOf(FileKind::STARTUP).size());
        const NodeUses pairs = entry.file->Pairs(entry.node);
        for (std::size_t i = 0; i + 1 < pairs.size; i += 2) {
            const Key* key = FindKey(FileKind::STARTUP, entry.file->Text(pairs[i]));
            if (key != nullptr && !seen[PlaceOf(FileKind::STARTUP, *key)]) {
                seen[PlaceOf(FileKind::STARTUP, *key)] = true;
                CheckValue(entry, *key, pairs[i + 1]);
            }
        }
        CheckOwners(entry);
    }

private:
    void CheckValue(const KeyedMapping& entry, const Key& key, const NodeUse& value);
    void CheckBoolean(const KeyedMapping& entry, const Key& key, const NodeUse& value);
    void CheckPolicy(const KeyedMapping& entry, const Key& key, const NodeUse& value);
    void CheckAccess(const KeyedMapping& entry, const Key& key, const NodeUse& value);
    void CheckOwners(const KeyedMapping& entry);
    void AddIgnored(const KeyedMapping& entry, const NodeUse& name, const NodeUse& number);

    Findings& findings_;
    LibraryValues values_;
    NumberCheck numbers_;
    // The lists and mappings that have been looked at: many entries may share one.
    std::set<std::tuple<const SourceFile*, std::uint32_t, const Key*>> known_;
};

void ValueCheck::CheckValue(const KeyedMapping& entry, const Key& key, const NodeUse& value)
{
    const NodeKind kind = entry.file->Kind(value);
    if (kind != NodeKind::SCALAR) {
        const bool isNew = known_.insert({entry.file, value.node, &key}).second;
        if (isNew && key.kind == KeyKind::ACCESS_MAP) {
            CheckAccess(entry, key, value);
        } else if (isNew && key.kind == KeyKind::NUMBER_LIST) {
            numbers_.CheckItems(entry, key, value);
        }
        return;
    }
    if (entry.file->Text(value).empty()) {
        return;
    }
    if (key.kind == KeyKind::FLAG || key.kind == KeyKind::SWITCH) {
        CheckBoolean(entry, key, value);
    } else if (key.kind == KeyKind::POLICY) {
        CheckPolicy(entry, key, value);
    } else if (IsNumber(key.kind)) {
        numbers_.Check(entry, key, value);
    }
}

void ValueCheck::CheckBoolean(const KeyedMapping& entry, const Key& key, const NodeUse& value)
{
    const std::string_view text = entry.file->Text(value);
    const bool isSwitch = key.kind == KeyKind::SWITCH;
    const std::string lower = Lower(isSwitch ? text : TrimBlanks(text));
    if (lower == "true" || lower == "false") {
        return;
    }
    const std::string effect =
        isSwitch ? std::string("it is kept as a text and is off: only \"true\" is on")
                 : fmt::format("it is read as {}", ReadWords(key, values_.Read(entry.entry, key)));
    findings_.Add(FindingAt(entry, kNotABoolean, value,
                            fmt::format("{} is neither true nor false", Quoted(text)), effect,
                            BooleanMeantBy(Lower(TrimBlanks(text)))));
}

void ValueCheck::CheckPolicy(const KeyedMapping& entry, const Key& key, const NodeUse& value)
{
    const std::string_view text = entry.file->Text(value);
    if (std::find(key.words.begin(), key.words.end(), text) != key.words.end()) {
        return;
    }
    findings_.Add(FindingAt(
        entry, kBadRestart, value, fmt::format("{} is no restart policy", Quoted(text)),
        fmt::format("the library logs a warning and takes {}", values_.Read(entry.entry, key).dump()),
        OneOf(key, text)));
}

void ValueCheck::CheckAccess(const KeyedMapping& entry, const Key& key, const NodeUse& value)
{
    const NodeUses pairs = entry.file->Pairs(value);
    for (std::size_t i = 0; i + 1 < pairs.size; i += 2) {
        const std::string_view text = entry.file->Text(pairs[i + 1]);
        if (std::find(key.words.begin(), key.words.end(), text) != key.words.end()) {
            continue;
        }
        const std::string group = Quoted(entry.file->Text(pairs[i]));
        findings_.Add(
            FindingAt(entry, kBadPermission, text.empty() ? pairs[i] : pairs[i + 1],
                      text.empty() ? fmt::format("the group {} has no access", group)
                                   : fmt::format("{} is no access to a shared memory pool", Quoted(text)),
                      fmt::format("the application does not join the group {}", group), OneOf(key, text)));
    }
}

void ValueCheck::CheckOwners(const KeyedMapping& entry)
{
    const SourceFile& file = *entry.file;
    const NodeUse* uid = file.FindKey(entry.node, "uid");
    const NodeUse* number = uid == nullptr ? file.FindKey(entry.node, "gid") : uid;
    const NodeUse* user = file.FindKey(entry.node, "user_name");
    const NodeUse* group = file.FindKey(entry.node, "group_name");
    const bool hasUser = user != nullptr && !file.Text(user[1]).empty();
    const bool hasGroup = group != nullptr && !file.Text(group[1]).empty();
    if (number != nullptr) {
        if (hasUser) {
            AddIgnored(entry, *user, *number);
        }
        if (hasGroup) {
            AddIgnored(entry, *group, *number);
        }
        return;
    }
    if (hasUser && !hasGroup) {
        findings_.Add(
            FindingAt(entry, kGroupDefaults, *user, "\"user_name\" without \"group_name\"",
                      fmt::format("the group id is {}: the group of the user's account is not taken",
                                  FindKey(FileKind::STARTUP, "gid")->absent),
                      "write \"group_name\", too"));
    }
}

void ValueCheck::AddIgnored(const KeyedMapping& entry, const NodeUse& name, const NodeUse& number)
{
    const Json uid = values_.Read(entry.entry, *FindKey(FileKind::STARTUP, "uid"));
    const Json gid = values_.Read(entry.entry, *FindKey(FileKind::STARTUP, "gid"));
    Finding finding = FindingAt(
        entry, kUserNameIgnored, name,
        fmt::format("\"{}\" is ignored beside \"{}\"", entry.file->Text(name), entry.file->Text(number)),
        fmt::format("the name is not looked at: the application runs with uid {} and gid {}", uid.dump(),
                    gid.dump()),
        "write numbers or names, not both");
    finding.related.push_back({entry.PositionOf(number), "the number is written here"});
    findings_.Add(std::move(finding));
}

} // namespace

void CheckValues(const Configuration& configuration, Findings& findings)
{
    ValueCheck check(configuration, findings);
    for (const KeyedMapping& mapping : KeyedMappings(configuration)) {
        if (mapping.kind == FileKind::STARTUP) {
            check.Check(mapping);
        }
    }
}

} // namespace tool
