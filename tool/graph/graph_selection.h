#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_SELECTION_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_SELECTION_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tool/graph/graph_picture.h"

namespace tool {

enum class Direction : std::uint8_t {
    DOWN, // to what a node waits for
    UP,   // to what waits for it
    BOTH, // each way by itself: not from one dependant to another through what both need
};

// Marks the nodes that at most `depth` edges lead to from one of `starts`, and these themselves.
std::vector<bool> Reached(const GraphPicture& picture, const std::vector<std::size_t>& starts,
                          Direction direction, std::size_t depth);

// The picture with the marked nodes only, and the edges between them.
GraphPicture Cut(const GraphPicture& picture, const std::vector<bool>& isKept);

} // namespace tool

#endif
