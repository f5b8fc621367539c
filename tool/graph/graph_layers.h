#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_LAYERS_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_LAYERS_H

#include <cstddef>
#include <vector>

#include "tool/graph/graph_picture.h"

namespace tool {

// A place in a layer: a node, or a bend of an edge that passes by.
struct Slot {
    std::size_t layer = 0;
    Vertex node = 0; // of a bend: the edge
    bool isBend = false;
    std::vector<Vertex> before; // slots in the layer before that an edge connects it to
    std::vector<Vertex> behind; // and in the layer behind
};

// A graph in layers: what waits for nothing is in layer 0, everything else behind all that it waits for.
struct GraphLayers {
    std::vector<Slot> slots;                 // the nodes, in their order, then the bends
    std::vector<std::vector<Vertex>> layers; // slots from top to bottom
    std::vector<std::vector<Vertex>> bends;  // of each edge, from `from` to `to`
    std::vector<bool> isTurned;              // whether an edge leads forwards, against the others: on a cycle
};

// Orders each layer so that few edges cross. Edges get bends only where that takes not too many of them.
GraphLayers MakeLayers(const GraphPicture& picture);

} // namespace tool

#endif
