#ifndef STARTPLAN_TOOL_CHECK_MISSING_H
#define STARTPLAN_TOOL_CHECK_MISSING_H

#include "tool/configuration.h"
#include "tool/dependency_index.h"
#include "tool/finding.h"

namespace tool {

// The dependencies for which the library drops applications: which names were meant, and who else suffers.
void CheckMissing(const Configuration& configuration, const DependencyIndex& index, Findings& findings);

} // namespace tool

#endif
