#ifndef STARTPLAN_TOOL_TEXT_NAME_LIST_H
#define STARTPLAN_TOOL_TEXT_NAME_LIST_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// A name as it stands in a finding: printable and in quotes.
std::string Quote(std::string_view name);

// The first few names and how many more there are: "a", "b", "c" and 7 more. With `isCut`, there may be more
// than those in the list.
std::string QuoteSome(const std::vector<std::string_view>& names, bool isCut = false);

} // namespace tool

#endif
