#ifndef STARTPLAN_TOOL_CHECK_CHECK_PATTERN_TEXT_H
#define STARTPLAN_TOOL_CHECK_CHECK_PATTERN_TEXT_H

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"

namespace tool {

// What is wrong with a name by itself.
void CheckPatternText(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
