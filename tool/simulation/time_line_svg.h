#ifndef STARTPLAN_TOOL_SIMULATION_TIME_LINE_SVG_H
#define STARTPLAN_TOOL_SIMULATION_TIME_LINE_SVG_H

#include <string>

#include "tool/simulation/time_line.h"

namespace tool {

// The time line as a picture of its own, a row for each step, light or dark as its reader wants it, without
// any script.
std::string TimeLineSvg(const TimeLine& line, const std::string& title);

} // namespace tool

#endif
