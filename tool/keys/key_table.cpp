#include "tool/keys/key_table.h"

#include <cstddef>
#include <unordered_map>

#include "tool/keys/key_rows.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

using KeyIndex = std::unordered_map<std::string_view, const Key*>;

KeyIndex IndexOf(FileKind kind)
{
    KeyIndex index;
    for (const Key& key : KeysOf(kind)) {
        index.emplace(key.name, &key);
    }
    return index;
}

} // namespace

const std::vector<Key>& KeysOf(FileKind kind)
{
    static const std::vector<Key> kStartup = StartupRows();
    static const std::vector<Key> kTopLevel = TopLevelRows();
    static const std::vector<Key> kReplace = ReplaceRows();
    if (kind == FileKind::STARTUP) {
        return kStartup;
    }
    return kind == FileKind::TOP_LEVEL ? kTopLevel : kReplace;
}

const Key* FindKey(FileKind kind, std::string_view name)
{
    static const KeyIndex kIndexes[] = {IndexOf(FileKind::STARTUP), IndexOf(FileKind::TOP_LEVEL),
                                        IndexOf(FileKind::REPLACE)};
    const KeyIndex& index = kIndexes[static_cast<std::size_t>(kind)];
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

std::size_t PlaceOf(FileKind kind, const Key& key)
{
    return static_cast<std::size_t>(&key - KeysOf(kind).data());
}

std::string NearestKey(FileKind kind, std::string_view name)
{
    std::vector<std::string> names;
    for (const Key& key : KeysOf(kind)) {
        names.emplace_back(key.name);
    }
    return Nearest(name, names);
}

bool IsOwnKey(std::string_view name)
{
    return name.substr(0, 2) == "x-";
}

bool IsNumber(KeyKind kind)
{
    switch (kind) {
    case KeyKind::SIGNED:
    case KeyKind::UNSIGNED:
    case KeyKind::HEXADECIMAL:
    case KeyKind::PRIORITY:
    case KeyKind::DEVICE_ID:
        return true;
    default:
        return false;
    }
}

bool IsList(KeyKind kind)
{
    return kind == KeyKind::TEXT_LIST || kind == KeyKind::NUMBER_LIST;
}

bool IsMap(KeyKind kind)
{
    return kind == KeyKind::MAP || kind == KeyKind::ACCESS_MAP;
}

const char* TitleOf(KeyGroup group)
{
    switch (group) {
    case KeyGroup::PROGRAM:
        return "Program";
    case KeyGroup::OWNER:
        return "Owner";
    case KeyGroup::LIFE:
        return "Start and end";
    case KeyGroup::DEPENDENCIES:
        return "Dependencies";
    case KeyGroup::SCHEDULING:
        return "Scheduling";
    case KeyGroup::RESOURCES:
        return "Resources";
    case KeyGroup::SUPERVISION:
        return "Supervision";
    case KeyGroup::FAMILY:
        return "Families";
    case KeyGroup::MIDDLEWARE:
        return "Middleware";
    case KeyGroup::FILES:
        return "Files";
    }
    return "";
}

} // namespace tool
