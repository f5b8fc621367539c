#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_TREE_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_TREE_H

#include <string>

#include "tool/command_line/session.h"
#include "tool/graph/graph_picture.h"

namespace tool {

// The graph as an indented list. Each node's own branch is printed once, where it is met first; every other
// place refers to it. Begins with the nodes that nobody waits for, or, upwards, that wait for nobody.
std::string ToTree(const GraphPicture& picture, bool isUpwards, const Session& session);

} // namespace tool

#endif
