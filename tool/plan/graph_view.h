#ifndef STARTPLAN_TOOL_PLAN_GRAPH_VIEW_H
#define STARTPLAN_TOOL_PLAN_GRAPH_VIEW_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "startplan/parse_and_depend.h"
#include "tool/plan/components.h"
#include "tool/plan/cycles.h"
#include "tool/source/source_tree.h"

namespace tool {

// A graph of names as plain data: numbers stand for names, so that walks are fast and need no stack. A
// smaller name has a smaller number, so whatever is sorted by number is sorted by name.
struct GraphView {
    std::vector<std::string> names; // ascending, each once
    std::vector<bool> isKnown;      // false: somebody needs it, but it is no key
    Successors needs;               // of each one whom it needs, ascending
    Successors neededBy;            // the same edges the other way

    std::size_t Size() const { return names.size(); }
    // The vertex of that exact name, or kNone.
    std::size_t Find(std::string_view name) const;
    std::size_t EdgeCount() const;
};

// Who depends on whom by the library's dependency table, compared literally as the library checks it: a
// pattern is one vertex.
GraphView ViewOf(const ParseAndDepend::DependsMap& table);

// Who waits for whom in one request, see RequestWaits().
GraphView ViewOf(const Waits& waits);

inline constexpr std::uint32_t kFar = static_cast<std::uint32_t>(-1);

// The shortest ways from one vertex to all others.
struct Ways {
    std::vector<std::uint32_t> steps; // kFar where no way leads
    std::vector<Vertex> previous;     // the vertex before this one on the way; the start's is itself

    bool Reaches(Vertex vertex) const { return steps[vertex] != kFar; }
    // From the start to `vertex`, both included; empty where no way leads.
    std::vector<Vertex> To(Vertex vertex) const;
};

// Of several shortest ways the one whose names come first.
Ways FindWays(const Successors& successors, Vertex start);

} // namespace tool

#endif
