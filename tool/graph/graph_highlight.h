#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_HIGHLIGHT_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_HIGHLIGHT_H

#include <cstddef>

#include "tool/graph/graph_picture.h"

namespace tool {

// Each of these marks nodes and edges, and says in the legend what is marked.

// Every node that is on a cycle, and the edges between those of one cycle. Returns how many nodes.
std::size_t HighlightCycles(GraphPicture& picture);

// A longest chain of edges; of several the one that is smallest by name. Cycles are left out. Returns how
// many nodes are on it.
std::size_t HighlightLongestChain(GraphPicture& picture);

// One node and its edges.
void HighlightNode(GraphPicture& picture, std::size_t node);

} // namespace tool

#endif
