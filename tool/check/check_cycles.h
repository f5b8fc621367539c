#ifndef STARTPLAN_TOOL_CHECK_CHECK_CYCLES_H
#define STARTPLAN_TOOL_CHECK_CHECK_CYCLES_H

#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/configuration/dependency_index.h"

namespace tool {

// Applications that wait for themselves and for each other. Whether there are any at all is asked from the
// library's graph. Returns for each name whether it is on a cycle.
std::vector<bool> CheckCycles(const Configuration& configuration, const DependencyIndex& index,
                              Findings& findings);

} // namespace tool

#endif
