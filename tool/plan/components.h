#ifndef STARTPLAN_TOOL_PLAN_COMPONENTS_H
#define STARTPLAN_TOOL_PLAN_COMPONENTS_H

#include <cstdint>
#include <vector>

namespace tool {

using Vertex = std::uint32_t;

// Of each vertex the vertices that its edges lead to.
using Successors = std::vector<std::vector<Vertex>>;

// The strongly connected components of a graph: vertices of which each reaches all others.
struct Components {
    std::vector<Vertex> of;                   // the component of each vertex
    std::vector<std::vector<Vertex>> members; // ascending; an edge never leads to a later component

    // Whether the component holds a cycle: several vertices, or one with an edge to itself.
    bool IsCyclic(Vertex component, const Successors& successors) const;
};

// In time and memory proportional to vertices plus edges, and without recursion.
Components FindComponents(const Successors& successors);

} // namespace tool

#endif
