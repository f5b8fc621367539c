#ifndef STARTPLAN_TOOL_CHECK_CHECK_MISSING_H
#define STARTPLAN_TOOL_CHECK_CHECK_MISSING_H

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/configuration/dependency_index.h"

namespace tool {

// The dependencies for which the library drops applications: which names were meant, and who else suffers.
void CheckMissing(const Configuration& configuration, const DependencyIndex& index, Findings& findings);

} // namespace tool

#endif
