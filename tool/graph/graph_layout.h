#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_LAYOUT_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_LAYOUT_H

#include <vector>

#include "tool/graph/graph_picture.h"

namespace tool {

struct Point {
    double x = 0;
    double y = 0;
};

struct Box {
    Point corner; // upper left
    double width = 0;
    double height = 0;
};

// Where everything goes, in pixels: layers are columns from left to right, so that an application stands to
// the right of all that it waits for.
struct GraphLayout {
    std::vector<Box> nodes;
    std::vector<std::vector<Point>> edges; // from `from` over the bends to `to`
    double width = 0;
    double height = 0;
};

// `labelWidths`: how wide each node's label is.
GraphLayout LayOut(const GraphPicture& picture, const std::vector<double>& labelWidths);

} // namespace tool

#endif
