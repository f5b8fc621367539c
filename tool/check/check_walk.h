#ifndef STARTPLAN_TOOL_CHECK_CHECK_WALK_H
#define STARTPLAN_TOOL_CHECK_CHECK_WALK_H

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"

namespace tool {

// Checks how the files name each other: circles, files named twice, the limit of their number.
void CheckWalk(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
