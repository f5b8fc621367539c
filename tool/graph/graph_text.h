#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_TEXT_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_TEXT_H

#include <string>

#include "tool/command_line/session.h"
#include "tool/graph/graph_picture.h"

namespace tool {

// For Graphviz. Node ids are made up, so that a name can hold anything; a long name is cut in its label and
// whole in its tool tip.
std::string ToDot(const GraphPicture& picture);

// A Mermaid flowchart.
std::string ToMermaid(const GraphPicture& picture);

// Adds "legend", "nodes" and "edges"; an edge names its nodes by their index.
void AddGraph(Json& json, const GraphPicture& picture);

// A name as a label: printable, and cut in the middle where it is long.
std::string Label(const std::string& name);

} // namespace tool

#endif
