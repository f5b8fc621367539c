#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_SVG_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_SVG_H

#include <string>

#include "tool/graph/graph_picture.h"

namespace tool {

// The graph as a picture of its own, light or dark as its reader wants it, without any script.
std::string ToSvg(const GraphPicture& picture);

} // namespace tool

#endif
