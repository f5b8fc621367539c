#ifndef STARTPLAN_TOOL_PLAN_REMARKS_H
#define STARTPLAN_TOOL_PLAN_REMARKS_H

#include <string>
#include <vector>

#include "tool/configuration.h"
#include "tool/request_plan.h"
#include "tool/session.h"

namespace tool {

// "label a, b, c" and a line end; as wide as the session's terminal at most, further lines indented.
std::string WrapNames(const Session& session, const std::string& label,
                      const std::vector<std::string>& names);

// What is to be said of a request besides its rounds: names not found, who is pulled in or left running,
// cycles, stalls. A headed paragraph each, with an empty line before it; without one where there is no
// round that could stand before the first.
void PrintRemarks(Session& session, const Configuration& configuration, const RequestPlan& plan);

// The same as members of a command's JSON, with the request and its rounds.
void AddRequestJson(Json& json, const RequestPlan& plan);

} // namespace tool

#endif
