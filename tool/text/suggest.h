#ifndef STARTPLAN_TOOL_TEXT_SUGGEST_H
#define STARTPLAN_TOOL_TEXT_SUGGEST_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// How many letters must be put in, left out, changed or swapped with their neighbour to make one text of
// the other; letter case does not count. `limit` + 1 for more than `limit`.
std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t limit);

// The candidate nearest to a misspelt word; empty where none is near. The first one of equals.
std::string Nearest(std::string_view word, const std::vector<std::string>& candidates);

// ", did you mean \"x\"?" for the nearest candidate, or nothing.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates);

} // namespace tool

#endif
