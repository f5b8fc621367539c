#ifndef STARTPLAN_TOOL_LIBRARY_TABLE_LOOKUP_H
#define STARTPLAN_TOOL_LIBRARY_TABLE_LOOKUP_H

#include <string>
#include <vector>

#include "startplan/parse_and_depend.h"

namespace tool {

// The entry of the dependency table that serves each name: what GetAppFromDependsMap() finds, null where
// it finds none. For many names at once, since a look-up of its own walks the whole table.
std::vector<const ParseAndDepend::DependsMap::value_type*>
EntriesServing(const ParseAndDepend& library, const std::vector<std::string>& names);

} // namespace tool

#endif
