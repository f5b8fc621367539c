#ifndef STARTPLAN_TOOL_PLAN_CYCLES_H
#define STARTPLAN_TOOL_PLAN_CYCLES_H

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tool {

// From a name to the names that it waits for. Names that are no key wait for nothing.
using Waits = std::map<std::string, std::set<std::string>>;

// Names of which each waits for all others, in the end.
struct Cycle {
    std::vector<std::string> members; // ascending
    // A shortest way round: each waits for the next one, the last one for the first. Begins with its
    // smallest name. Of very many members, the shortest one that a bounded search finds.
    std::vector<std::string> shortest;
};

// Every strongly connected component that holds a cycle, once; by its smallest name. Explains what the
// library's graph reports; whether there is a cycle is the library's verdict alone.
std::vector<Cycle> FindCycles(const Waits& waits);

// Who else cannot go on because of the cycles: everyone who waits for a member. Ascending.
std::vector<std::string> BlockedBy(const Waits& waits, const std::vector<Cycle>& cycles);

} // namespace tool

#endif
