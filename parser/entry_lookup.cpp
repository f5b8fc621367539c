#include "parser/entry_lookup.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace {

using startplan::kEntryKeyCount;
using startplan::kEntryKeyNames;

constexpr std::size_t kLongestKey = 19;

// The keys sorted by the length of their names, and where in that order each length begins. At most five
// names share a length, so a text is compared with few of them or none.
struct KeysByLength {
    std::array<std::uint8_t, kEntryKeyCount> keys = {};
    std::array<std::uint8_t, kLongestKey + 2> first = {};
};

constexpr KeysByLength SortKeysByLength()
{
    KeysByLength sorted;
    std::size_t used = 0;
    for (std::size_t length = 0; length <= kLongestKey; ++length) {
        sorted.first[length] = static_cast<std::uint8_t>(used);
        for (std::size_t key = 0; key < kEntryKeyCount; ++key) {
            if (std::string_view(kEntryKeyNames[key]).size() == length) {
                sorted.keys[used++] = static_cast<std::uint8_t>(key);
            }
        }
    }
    sorted.first[kLongestKey + 1] = static_cast<std::uint8_t>(used);
    return sorted;
}

constexpr KeysByLength kKeysByLength = SortKeysByLength();
static_assert(kKeysByLength.first[kLongestKey + 1] == kEntryKeyCount, "kLongestKey is too small");

std::optional<std::size_t> KeyNamed(std::string_view text)
{
    if (text.size() > kLongestKey) {
        return std::nullopt;
    }
    for (std::size_t i = kKeysByLength.first[text.size()]; i < kKeysByLength.first[text.size() + 1]; ++i) {
        const std::size_t key = kKeysByLength.keys[i];
        if (text == std::string_view(kEntryKeyNames[key], text.size())) {
            return key;
        }
    }
    return std::nullopt;
}

} // namespace

namespace startplan {

EntryLookup::EntryLookup(NodeRef entry) : entry_(entry)
{
    if (!entry.IsMapping() || entry.document == nullptr) {
        return;
    }
    const auto& pairs = entry.node->data.mapping.pairs;
    for (const yaml_node_pair_t* pair = pairs.start; pair != pairs.top; ++pair) {
        const yaml_node_t* value = entry.Get(pair->value);
        const yaml_node_t* keyNode = entry.Get(pair->key);
        if (value == nullptr || keyNode == nullptr) {
            isBroken_ = true;
            return;
        }
        const std::optional<std::size_t> key = KeyNamed(ScalarText(*keyNode));
        if (key && values_[*key] == nullptr) { // the first of a repeated key counts
            values_[*key] = value;
        }
    }
}

NodeRef EntryLookup::Find(EntryKey key) const
{
    if (!entry_.IsMapping()) {
        LogSubNotMap(NameOf(key));
        return {};
    }
    const yaml_node_t* value = values_[static_cast<std::size_t>(key)];
    if (value != nullptr) {
        return {entry_.document, value};
    }
    if (isBroken_) {
        LogSubNodeMissing(NameOf(key));
    }
    return {};
}

} // namespace startplan
