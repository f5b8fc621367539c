#ifndef STARTPLAN_TOOL_GRAPH_GRAPH_GROUPS_H
#define STARTPLAN_TOOL_GRAPH_GRAPH_GROUPS_H

#include <string>
#include <utility>
#include <vector>

#include "tool/graph/graph_picture.h"

namespace tool {

// By the startup file that an application stands in, dropped ones too.
void GroupByFile(GraphPicture& picture, const Configuration& configuration);

// By the beginning of the names, up to the first of "_", "-", "." or "/"; where at least two share it.
void GroupByPrefix(GraphPicture& picture);

// The nodes of each group, ascending by group; those without a group first, if there are any.
std::vector<std::pair<std::string, std::vector<Vertex>>> Groups(const GraphPicture& picture);

} // namespace tool

#endif
