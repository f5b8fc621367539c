#ifndef STARTPLAN_TOOL_CHECK_CHECK_REDUNDANT_H
#define STARTPLAN_TOOL_CHECK_CHECK_REDUNDANT_H

#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/configuration/dependency_index.h"

namespace tool {

// Dependencies that another dependency has, too. Looks one step further only, and no further at all once it
// has done so often enough: so the work stays in proportion to the tree. `isOnCycle` as from CheckCycles().
void CheckRedundant(const Configuration& configuration, const DependencyIndex& index,
                    const std::vector<bool>& isOnCycle, Findings& findings);

} // namespace tool

#endif
