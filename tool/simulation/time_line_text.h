#ifndef STARTPLAN_TOOL_SIMULATION_TIME_LINE_TEXT_H
#define STARTPLAN_TOOL_SIMULATION_TIME_LINE_TEXT_H

#include <string>

#include "tool/command_line/session.h"
#include "tool/plan/request_plan.h"
#include "tool/simulation/time_line.h"

namespace tool {

// A row for each step, with its times and a bar.
std::string TimeLineTable(const Session& session, const TimeLine& line);

// The steps that each held up the next one, with their times.
std::string CriticalPathText(const TimeLine& line);

// "startplan-simulate"'s members of a time line.
void AddTimeLineJson(Json& json, const TimeLine& line);

} // namespace tool

#endif
