#ifndef STARTPLAN_TOOL_CHECK_DEPENDENCIES_H
#define STARTPLAN_TOOL_CHECK_DEPENDENCIES_H

#include <vector>

#include "tool/configuration.h"
#include "tool/finding.h"

namespace tool {

// About what waits for what.
std::vector<const Rule*> DependencyRules();

// @pre configuration.WasRead().
void CheckDependencies(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
