#include "tool/keys/library_values.h"

#include <nlohmann/json.hpp>

#include "tool/library/log_collector.h"
#include "tool/text/printable.h"

namespace tool {

LibraryValues::LibraryValues(const Configuration& configuration)
    : configuration_(configuration), tree_(configuration.tree), firstOfVisit_(tree_.Visits().size(), kNone),
      appOfEntry_(tree_.Entries().size(), kNone)
{
    for (std::size_t i = tree_.Entries().size(); i > 0; --i) {
        firstOfVisit_[tree_.Entries()[i - 1].visit] = i - 1;
    }
    for (std::size_t app = 0; app < configuration.entryOfApp.size(); ++app) {
        if (configuration.entryOfApp[app] != kNone) {
            appOfEntry_[configuration.entryOfApp[app]] = app;
        }
    }
}

Json LibraryValues::Read(std::size_t entry, const Key& key)
{
    if (appOfEntry_[entry] != kNone) {
        return key.value(configuration_.apps[appOfEntry_[entry]]);
    }
    const LogCollector unheard; // the library has said all of it already
    const ProcMgr::KvsTypeYaml* node = NodeOf(entry);
    return node == nullptr ? Json() : ReadNode(*node, key);
}

Json LibraryValues::ReadNode(const ProcMgr::KvsTypeYaml& node, const Key& key) const
{
    switch (key.kind) {
    case KeyKind::FLAG:
        return parser_.GetBoolValue(node, key.name, false);
    case KeyKind::POLICY:
        return parser_.GetRestart(node);
    case KeyKind::NUMBER_LIST: {
        std::vector<std::uint32_t> numbers;
        parser_.GetCodeAffinity(numbers, node);
        return numbers;
    }
    default:
        return IsNumber(key.kind) ? ReadNumber(node, key) : Json(parser_.GetStrValue(node, key.name, ""));
    }
}

Json LibraryValues::ReadNumber(const ProcMgr::KvsTypeYaml& node, const Key& key) const
{
    if (key.group == KeyGroup::OWNER) {
        return ReadOwner(node, key);
    }
    switch (key.kind) {
    case KeyKind::UNSIGNED:
        return parser_.GetUintValue(node, key.name, 0);
    case KeyKind::HEXADECIMAL:
        return parser_.GetNodeType(node);
    case KeyKind::PRIORITY:
        return parser_.GetStartupPriority(node);
    default:
        return parser_.GetIntValue(node, key.name, 0);
    }
}

Json LibraryValues::ReadOwner(const ProcMgr::KvsTypeYaml& node, const Key& key) const
{
    std::uint32_t uid = 0;
    std::uint32_t gid = 0;
    parser_.GetOwnership(node, uid, gid);
    return key.name == std::string_view("uid") ? uid : gid;
}

const ProcMgr::KvsTypeYaml* LibraryValues::NodeOf(std::size_t entry)
{
    const SourceEntry& source = tree_.Entries()[entry];
    const std::size_t file = tree_.Visits()[source.visit].file;
    if (file != file_) {
        entries_.clear();
        file_ = file;
        ProcMgr::KvsTypeYaml root;
        if (root.InitYamlNode(tree_.FileOf(source).Path())) {
            root.GetArray(entries_);
        }
    }
    const std::size_t place = entry - firstOfVisit_[source.visit];
    const bool isSame =
        place < entries_.size() && entries_[place].GetKey() == tree_.FileOf(source).Text(source.key);
    return isSame ? &entries_[place] : nullptr;
}

std::string ReadWords(const Key& key, const Json& read)
{
    if (read.is_string()) {
        const std::string text = read.get<std::string>();
        return text.empty() ? "the empty text" : Quoted(text);
    }
    return read.dump() + (IsRoot(key, read) ? ", which is root" : "");
}

bool IsRoot(const Key& key, const Json& read)
{
    return key.group == KeyGroup::OWNER && read == 0;
}

} // namespace tool
