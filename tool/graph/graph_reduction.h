#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_REDUCTION_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_REDUCTION_H

#include <cstddef>

#include "tool/graph/graph_picture.h"

namespace tool {

// Takes out every edge that says nothing new, since a longer way leads to the same node; the legend says
// so. Edges within a cycle stay, all of them. Returns how many were taken out.
//
// Takes time and memory in proportion to edges times nodes over 64, and to nodes.
std::size_t Reduce(GraphPicture& picture);

} // namespace tool

#endif
