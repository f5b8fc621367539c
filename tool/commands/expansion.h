#ifndef STARTPLAN_TOOL_COMMANDS_EXPANSION_H
#define STARTPLAN_TOOL_COMMANDS_EXPANSION_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tool {

// The names that a pattern stands for.
struct Expansion {
    // With the numbers counted up, the last parameter first, and without leading zeros. "<*>" and "<*PATH>"
    // are left as they are.
    std::vector<std::string> members;
    std::uint64_t most = 0;           // how many of them there are, at most; the largest number for more
    bool isCut = false;               // not all of them are in `members`
    bool isOpen = false;              // no list can hold every name: any text may stand somewhere
    std::vector<std::string> remarks; // what the list does not show: printable, lower case, no full stop
    std::string fault;                // why no name matches, likewise; empty where some do
};

Expansion Expand(const std::string& pattern, std::size_t limit);

} // namespace tool

#endif
