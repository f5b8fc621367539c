#ifndef STARTPLAN_TOOL_COMMANDS_EXPLANATION_TEXT_H
#define STARTPLAN_TOOL_COMMANDS_EXPLANATION_TEXT_H

#include <string>
#include <vector>

#include "tool/command_line/session.h"
#include "tool/commands/explanation.h"

namespace tool {

// `isFull`: every chain, not only the nearest ones.
void PrintExplanation(Session& session, const Configuration& configuration, const Explanation& all,
                      bool isFull);

void AddExplanationJson(Json& json, const Configuration& configuration, const Explanation& all);

// A chain of names of which each needs the next one, and where that is written. Nothing for no way.
std::string WayText(const Configuration& configuration, const GraphView& graph,
                    const std::vector<Vertex>& way);
Json WayJson(const Configuration& configuration, const GraphView& graph, const std::vector<Vertex>& way);

} // namespace tool

#endif
