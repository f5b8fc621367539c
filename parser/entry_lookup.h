#ifndef STARTPLAN_PARSER_ENTRY_LOOKUP_H
#define STARTPLAN_PARSER_ENTRY_LOOKUP_H

#include <array>

#include "parser/entry_keys.h"
#include "yaml/node_ref.h"

namespace startplan {

// The values of one entry's keys, found in one walk over its pairs instead of one for each key.
class EntryLookup {
public:
    explicit EntryLookup(NodeRef entry);

    // What FindInMapping(entry, NameOf(key)) finds and logs.
    NodeRef Find(EntryKey key) const;

private:
    NodeRef entry_;
    bool isBroken_ = false; // a pair lacks its nodes; keys behind it are not found
    std::array<const yaml_node_t*, kEntryKeyCount> values_ = {};
};

} // namespace startplan

#endif
