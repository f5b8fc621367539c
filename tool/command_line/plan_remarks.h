#ifndef STARTPLAN_TOOL_COMMAND_LINE_PLAN_REMARKS_H
#define STARTPLAN_TOOL_COMMAND_LINE_PLAN_REMARKS_H

#include <string>
#include <vector>

#include "tool/command_line/session.h"
#include "tool/configuration/configuration.h"
#include "tool/plan/request_plan.h"

namespace tool {

// "label a, b, c" and a line end; as wide as the session's terminal at most, further lines indented.
std::string WrapNames(const Session& session, const std::string& label,
                      const std::vector<std::string>& names);

// What is to be said of a request besides its rounds: names not found, who is pulled in or left running,
// cycles, stalls. A headed paragraph each, with an empty line before it, but for the first one where it is
// the first thing printed.
void PrintRemarks(Session& session, const Configuration& configuration, const RequestPlan& plan,
                  bool isFirst);

// A command's JSON: what was requested, and the same remarks.
void AddRequestJson(Json& json, const RequestPlan& plan);
void AddRemarksJson(Json& json, const RequestPlan& plan);

} // namespace tool

#endif
