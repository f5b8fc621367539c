#ifndef STARTPLAN_TOOL_KEYS_LIBRARY_VALUES_H
#define STARTPLAN_TOOL_KEYS_LIBRARY_VALUES_H

#include <cstddef>
#include <string>
#include <vector>

#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "tool/configuration/configuration.h"
#include "tool/keys/key_table.h"

namespace tool {

// What the library makes of a value: out of the record, or, for an entry that it has not kept, by its readers.
// For those the file is read once more.
class LibraryValues {
public:
    explicit LibraryValues(const Configuration& configuration);

    // The key's value in the entry (of SourceTree::Entries()), complete or not, as JSON: "0", "false".
    // Null if the file has changed in between. Best asked in the order of the entries.
    // @pre key.value is not null, and an owner is written as a number: names would be looked up here.
    Json Read(std::size_t entry, const Key& key);

private:
    Json ReadNode(const ProcMgr::KvsTypeYaml& node, const Key& key) const;
    const ProcMgr::KvsTypeYaml* NodeOf(std::size_t entry);
    Json ReadNumber(const ProcMgr::KvsTypeYaml& node, const Key& key) const;
    Json ReadOwner(const ProcMgr::KvsTypeYaml& node, const Key& key) const;

    const Configuration& configuration_;
    const SourceTree& tree_;
    const ProcMgr::YamlParser parser_;
    std::size_t file_ = kNone; // whose entries are in entries_
    std::vector<ProcMgr::KvsTypeYaml> entries_;
    std::vector<std::size_t> firstOfVisit_;
    std::vector<std::size_t> appOfEntry_; // kNone for an entry that is not kept
};

// What was read of a key, for a message: "0, which is root", "the empty text".
std::string ReadWords(const Key& key, const Json& read);

// Whether a number that was not meant so makes an application run as root, or with its group.
bool IsRoot(const Key& key, const Json& read);

} // namespace tool

#endif
