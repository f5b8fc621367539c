#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_PICTURE_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tool/configuration/configuration.h"
#include "tool/plan/components.h"
#include "tool/plan/request_plan.h"

namespace tool {

enum class NodeState : std::uint8_t {
    KEPT,
    DROPPED, // the library dropped the application: a dependency of it is not configured
    MISSING, // a name that something waits for, and that is not there
};

struct GraphNode {
    std::string name;
    NodeState state = NodeState::KEPT;
    bool isPattern = false;
    bool isHighlighted = false;
    std::size_t app = kNone; // in Configuration::apps; kNone for what the device does not have
    std::string group;       // empty for none
};

struct GraphEdge {
    Vertex from = 0; // waits for
    Vertex to = 0;
    bool isHighlighted = false;
};

// A dependency graph as plain data, for whoever draws it.
struct GraphPicture {
    std::vector<GraphNode> nodes; // ascending by name
    std::vector<GraphEdge> edges; // ascending by from, then to; each pair once
    // What an arrow means, and what else must be known to read the picture. Plain sentences.
    std::vector<std::string> legend;

    // The node with that name, or kNone.
    std::size_t Find(const std::string& name) const;
};

// Everything that is configured: each name of the dependency table waits for those it depends on. Dropped
// applications and missing names are nodes, too.
GraphPicture PictureOfAll(const Configuration& configuration);

// One request as the library takes it: a start waits for dependencies, a stop for dependants. Requested
// names that are not found are no nodes, unless something waits for them.
GraphPicture PictureOfRequest(const Configuration& configuration, RequestKind kind,
                              const std::vector<std::string>& names);

// The edges as lists: of each node the nodes that it waits for; or, turned round, that wait for it.
Successors WaitsFor(const GraphPicture& picture);
Successors WaitedForBy(const GraphPicture& picture);

} // namespace tool

#endif
