#ifndef STARTPLAN_TOOL_CHECK_PATTERNS_H
#define STARTPLAN_TOOL_CHECK_PATTERNS_H

#include <vector>

#include "tool/configuration.h"
#include "tool/finding.h"

namespace tool {

// About names that are patterns.
std::vector<const Rule*> PatternRules();

// @pre configuration.WasRead().
void CheckPatterns(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
