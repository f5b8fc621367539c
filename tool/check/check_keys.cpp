#include "tool/check/check_keys.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/check/keyed_mapping.h"
#include "tool/keys/key_page.h"
#include "tool/keys/library_values.h"
#include "tool/rules/rules_entries.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr const char* kKindNames[] = {"a single value", "a list", "a mapping"};

const char* NameOf(NodeKind kind)
{
    return kKindNames[static_cast<std::size_t>(kind)];
}

bool LooksEmpty(const SourceNode& node, std::string_view text)
{
    return node.isPlain && (text == "~" || text == "null" || text == "Null" || text == "NULL");
}

// Whether a text can stand in a list in brackets as it is.
bool IsPlainWord(std::string_view text)
{
    return text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_/.") ==
           std::string_view::npos;
}

// The manual's words in a message.
std::string InMessage(std::string words)
{
    std::replace(words.begin(), words.end(), '`', '"');
    return words;
}

class KeyCheck {
public:
    KeyCheck(const Configuration& configuration, Findings& findings)
        : findings_(findings), values_(configuration)
    {}

    void Check(const KeyedMapping& mapping)
    {
        std::vector<const NodeUse*> first(KeysOf(mapping.kind).size());
        const NodeUses pairs = mapping.file->Pairs(mapping.node);
        for (std::size_t i = 0; i + 1 < pairs.size; i += 2) {
            const std::string_view name = mapping.file->Text(pairs[i]);
            const Key* key = FindKey(mapping.kind, name);
            if (key == nullptr) {
                AddUnknown(mapping, pairs[i]);
                continue;
            }
            const NodeUse*& known = first[PlaceOf(mapping.kind, *key)];
            // The replace data are read wherever they stand.
            if (known != nullptr && mapping.kind != FileKind::REPLACE) {
                AddDuplicate(mapping, *known, pairs[i]);
                continue;
            }
            known = &pairs[i];
            CheckValue(mapping, *key, pairs[i], pairs[i + 1]);
        }
    }

private:
    void AddUnknown(const KeyedMapping& mapping, const NodeUse& use);
    void AddDuplicate(const KeyedMapping& mapping, const NodeUse& first, const NodeUse& later);
    void CheckValue(const KeyedMapping& mapping, const Key& key, const NodeUse& use, const NodeUse& value);
    void CheckScalar(const KeyedMapping& mapping, const Key& key, const NodeUse& use, const NodeUse& value);
    void CheckList(const KeyedMapping& mapping, const Key& key, const NodeUse& use, const NodeUse& value);
    void CheckMap(const KeyedMapping& mapping, const Key& key, const NodeUse& value);
    void AddWrongKind(const KeyedMapping& mapping, const Key& key, const NodeUse& use, const NodeUse& value);
    void AddEmpty(const KeyedMapping& mapping, const Key& key, const NodeUse& use);
    Json ReadAs(const KeyedMapping& mapping, const Key& key);

    Findings& findings_;
    LibraryValues values_;
    // The lists and mappings that have been looked at, as the value of which key: many entries may share one.
    std::set<std::tuple<const SourceFile*, std::uint32_t, const Key*>> known_;
    // The names of the replace data, which may stand in more than one mapping.
    std::unordered_map<std::string_view, const NodeUse*> replaceNames_;
};

void KeyCheck::AddUnknown(const KeyedMapping& mapping, const NodeUse& use)
{
    const std::string_view name = mapping.file->Text(use);
    if (IsOwnKey(name)) {
        return;
    }
    std::string effect = "the library ignores it and what stands behind it";
    std::string help = "take it out, or begin the key with \"x-\" if it is your own";
    const std::string nearest = NearestKey(mapping.kind, name);
    if (name == "<<") {
        effect = "the library knows no merge key: nothing is merged";
        help = "write the keys out, or give the whole value by an alias";
    } else if (!nearest.empty()) {
        help = fmt::format("write \"{}\", or begin the key with \"x-\" if it is your own", nearest);
        const Key& key = *FindKey(mapping.kind, nearest);
        if (mapping.file->Find(mapping.node, nearest) == nullptr && !key.isNeeded) {
            effect = fmt::format("the library ignores it; \"{}\" counts as left out: {}", nearest,
                                 InMessage(DefaultWords(key)));
        }
    }
    findings_.Add(FindingAt(mapping, kUnknownKey, use, fmt::format("unknown key {}", Quoted(name)),
                            std::move(effect), std::move(help)));
}

void KeyCheck::AddDuplicate(const KeyedMapping& mapping, const NodeUse& first, const NodeUse& later)
{
    const SourceFile& file = *mapping.file;
    const NodeUse& value = *(&first + 1);
    const std::string taken =
        file.Kind(value) == NodeKind::SCALAR ? fmt::format(", {}", Quoted(file.Text(value))) : "";
    Finding finding =
        FindingAt(mapping, kDuplicateKey, later, fmt::format("{} is written twice", Quoted(file.Text(later))),
                  fmt::format("the library takes the first one{}, and does not look at this one", taken),
                  "keep one of them");
    finding.related.push_back({mapping.PositionOf(first), "written here first"});
    findings_.Add(std::move(finding));
}

void KeyCheck::CheckValue(const KeyedMapping& mapping, const Key& key, const NodeUse& use,
                          const NodeUse& value)
{
    const NodeKind kind = mapping.file->Kind(value);
    const NodeKind wanted = IsScalar(key.kind) ? NodeKind::SCALAR
                            : IsList(key.kind) ? NodeKind::SEQUENCE
                                               : NodeKind::MAPPING;
    if (key.isNeeded && (kind != wanted || mapping.file->Text(value).empty())) {
        return; // that makes the entry incomplete
    }
    if (mapping.kind == FileKind::REPLACE && kind != wanted) {
        return; // what becomes of replace data without values is told about the file
    }
    if (kind == NodeKind::SCALAR && mapping.file->Text(value).empty()) {
        AddEmpty(mapping, key, use);
        return;
    }
    if (kind != wanted) {
        AddWrongKind(mapping, key, use, value);
        return;
    }
    if (kind == NodeKind::SCALAR) {
        CheckScalar(mapping, key, use, value);
        return;
    }
    if (!known_.insert({mapping.file, value.node, &key}).second) {
        return;
    }
    if (kind == NodeKind::SEQUENCE) {
        CheckList(mapping, key, use, value);
        return;
    }
    CheckMap(mapping, key, value);
}

void KeyCheck::CheckScalar(const KeyedMapping& mapping, const Key& key, const NodeUse& use,
                           const NodeUse& value)
{
    const std::string_view text = mapping.file->Text(value);
    const bool isText = key.kind == KeyKind::TEXT || key.kind == KeyKind::ACCOUNT;
    if (!isText || !LooksEmpty(mapping.file->Node(value), text)) {
        return;
    }
    findings_.Add(FindingAt(mapping, kEmptyValue, value, fmt::format("{} is not empty here", Quoted(text)),
                            fmt::format("the library takes it for the text {}", Quoted(text)),
                            fmt::format("take {} out to have nothing", Quoted(mapping.file->Text(use)))));
}

void KeyCheck::CheckList(const KeyedMapping& mapping, const Key& key, const NodeUse& use,
                         const NodeUse& value)
{
    const NodeUses items = mapping.file->Items(value);
    const bool isLimited = key.kind == KeyKind::TEXT_LIST && key.most != 0;
    if (isLimited && items.size > static_cast<std::size_t>(key.most)) {
        findings_.Add(FindingAt(mapping, kTooManyArguments, use,
                                fmt::format("{} {}, and {} is the most", items.size, key.name, key.most),
                                "all of them are dropped: the application starts without any",
                                "pass fewer, for example the path of a file that holds the rest"));
    }
    for (std::size_t i = 0; i < items.size; ++i) {
        const NodeKind kind = mapping.file->Kind(items[i]);
        if (kind == NodeKind::SCALAR) {
            continue;
        }
        findings_.Add(
            FindingAt(mapping, kMapForScalar, items[i],
                      fmt::format("item {} of \"{}\" is {}, and a single value is wanted", i + 1, key.name,
                                  NameOf(kind)),
                      key.kind == KeyKind::NUMBER_LIST ? "it is read as 0" : "it is read as the empty text",
                      "write one value; put it in quotes if it holds \": \" or brackets"));
    }
}

void KeyCheck::CheckMap(const KeyedMapping& mapping, const Key& key, const NodeUse& value)
{
    const bool isFirstKept = key.kind == KeyKind::MAP && std::string_view(key.name) != "cgroup_path";
    std::unordered_map<std::string_view, const NodeUse*> ownNames;
    auto& names = mapping.kind == FileKind::REPLACE ? replaceNames_ : ownNames;
    const NodeUses pairs = mapping.file->Pairs(value);
    for (std::size_t i = 0; i + 1 < pairs.size; i += 2) {
        const std::string_view name = mapping.file->Text(pairs[i]);
        const auto [known, isFirst] = names.emplace(name, &pairs[i]);
        if (!isFirst && isFirstKept) {
            AddDuplicate(mapping, *known->second, pairs[i]);
            continue;
        }
        const NodeKind kind = mapping.file->Kind(pairs[i + 1]);
        if (kind != NodeKind::SCALAR && key.kind == KeyKind::MAP) {
            findings_.Add(FindingAt(mapping, kMapForScalar, pairs[i],
                                    fmt::format("{} in \"{}\" is {}, and a single value is wanted",
                                                Quoted(name), key.name, NameOf(kind)),
                                    "it is read as the empty text", "write one value"));
        }
    }
}

void KeyCheck::AddWrongKind(const KeyedMapping& mapping, const Key& key, const NodeUse& use,
                            const NodeUse& value)
{
    const NodeKind kind = mapping.file->Kind(value);
    const std::string_view text = mapping.file->Text(value);
    const auto message = [&key, kind](const char* wanted) {
        return fmt::format("\"{}\" is {}, and {} is wanted", key.name, NameOf(kind), wanted);
    };
    if (IsList(key.kind)) {
        const std::string help = kind == NodeKind::SCALAR && IsPlainWord(text)
                                     ? fmt::format("write \"{}: [{}]\"", key.name, text)
                                     : "write one item a line, each behind \"- \"";
        findings_.Add(FindingAt(mapping, kScalarForList, use, message("a list"),
                                "it is read as an empty list, without a message", help));
        return;
    }
    if (IsMap(key.kind)) {
        findings_.Add(FindingAt(mapping, kListForMap, use, message("a mapping of names to values"),
                                "nothing of it is read", "write one \"NAME: value\" a line"));
        return;
    }
    const Json read = ReadAs(mapping, key);
    findings_.Add(FindingAt(mapping, kMapForScalar, use, message("a single value"),
                            fmt::format("it is read as {}", ReadWords(key, read)), "write one value"));
}

void KeyCheck::AddEmpty(const KeyedMapping& mapping, const Key& key, const NodeUse& use)
{
    const bool isDefault = std::string_view(key.empty) == key.absent;
    if (isDefault && !key.warnsOfEmpty) {
        return;
    }
    const Json read = ReadAs(mapping, key);
    const std::string effect = isDefault
                                   ? std::string("it counts as left out, and the library logs a warning")
                                   : fmt::format("it is read as {}; leaving the key out would mean {}",
                                                 ReadWords(key, read), InMessage(DefaultWords(key)));
    Finding finding = FindingAt(mapping, kEmptyValue, use, fmt::format("\"{}\" is empty", key.name), effect,
                                "write a value, or take the key out");
    finding.least = IsRoot(key, read) ? Level::ERROR : Level::OFF;
    findings_.Add(std::move(finding));
}

Json KeyCheck::ReadAs(const KeyedMapping& mapping, const Key& key)
{
    const Json read = key.value == nullptr ? Json() : values_.Read(mapping.entry, key);
    return read.is_null() ? Json::parse(key.misfit) : read;
}

} // namespace

void CheckKeys(const Configuration& configuration, Findings& findings)
{
    KeyCheck check(configuration, findings);
    for (const KeyedMapping& mapping : KeyedMappings(configuration)) {
        check.Check(mapping);
    }
}

} // namespace tool
