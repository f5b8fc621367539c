#ifndef STARTPLAN_TOOL_CHECK_VALUES_H
#define STARTPLAN_TOOL_CHECK_VALUES_H

#include <vector>

#include "tool/configuration.h"
#include "tool/finding.h"

namespace tool {

// About what the library makes of values.
std::vector<const Rule*> ValueRules();

// @pre configuration.WasRead().
void CheckValues(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
