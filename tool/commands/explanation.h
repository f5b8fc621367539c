#ifndef STARTPLAN_TOOL_COMMANDS_EXPLANATION_H
#define STARTPLAN_TOOL_COMMANDS_EXPLANATION_H

#include <cstddef>
#include <string>
#include <vector>

#include "tool/configuration/configuration.h"
#include "tool/plan/graph_view.h"
#include "tool/plan/request_plan.h"

namespace tool {

// One entry with the name in question.
struct EntryFate {
    std::size_t entry = 0; // in the tree's Entries()
    EntryState state = EntryState::KEPT;
    bool isOverruled = false;         // a later entry's dependencies count instead of its own
    std::string reason;               // why it is not kept
    std::vector<std::string> missing; // the dependencies for which it was dropped
};

// When a request for all, and for the name, hands it out.
struct RoundFate {
    RequestPlan plan;
    std::size_t round = 0;            // counted from 1; 0 for never
    std::vector<std::string> because; // from the first round to the name, each waits for the one before
};

// All that is known of one name.
struct Explanation {
    std::string name;
    std::vector<EntryFate> entries;
    std::string servedBy; // the key that the library finds for a request; empty for none
    std::vector<std::string> alsoMatching;
    GraphView graph; // of the dependency table
    Ways needs;      // from the name, empty where the table does not know it
    Ways neededBy;
    std::vector<std::string> unknownNeeds; // direct ones that are no key of the table, as dropped ones are
    RoundFate start;
    RoundFate stop;

    // Whether the device has something to start under that name.
    bool IsServed() const { return !servedBy.empty(); }
};

Explanation Explain(const Configuration& configuration, const std::string& name);

// The table's vertex that a name stands for: that of its own, else that of the key that serves it; kNone.
std::size_t VertexFor(const Configuration& configuration, const GraphView& graph, const std::string& name);

// A shortest way from one vertex to another; from a vertex to itself, round a cycle. Empty for none.
std::vector<Vertex> FindWay(const GraphView& graph, Vertex from, Vertex to);

} // namespace tool

#endif
