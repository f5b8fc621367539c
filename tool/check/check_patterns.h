#ifndef STARTPLAN_TOOL_CHECK_CHECK_PATTERNS_H
#define STARTPLAN_TOOL_CHECK_CHECK_PATTERNS_H

#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"

namespace tool {

// @pre configuration.WasRead().
void CheckPatterns(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
