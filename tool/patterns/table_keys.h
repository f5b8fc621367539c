#ifndef STARTPLAN_TOOL_PATTERNS_TABLE_KEYS_H
#define STARTPLAN_TOOL_PATTERNS_TABLE_KEYS_H

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tool/configuration/configuration.h"

namespace tool {

// A key of the library's dependency table, as a look-up meets it.
struct TableKey {
    const std::string* name = nullptr;
    const std::set<std::string>* depends = nullptr;
    std::string_view lead; // the text that every match begins with; all of a plain name
    bool isPattern = false;
};

// Every key that a look-up can find, in ascending order of the lead and then of the name: those whose lead
// begins with a given text stand together, the text itself first.
std::vector<TableKey> TableKeys(const Configuration& configuration);

// The entry whose dependencies the key has; null if the files changed while they were read.
const SourceEntry* EntryOf(const Configuration& configuration, const TableKey& key);

bool BeginsWith(std::string_view text, std::string_view beginning);

} // namespace tool

#endif
