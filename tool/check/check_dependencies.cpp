#include "tool/check/check_dependencies.h"

#include "tool/check/check_cycles.h"
#include "tool/check/check_missing.h"
#include "tool/check/check_redundant.h"
#include "tool/configuration/dependency_index.h"

namespace tool {

void CheckDependencies(const Configuration& configuration, Findings& findings)
{
    const DependencyIndex index(configuration);
    CheckMissing(configuration, index, findings);
    const std::vector<bool> isOnCycle = CheckCycles(configuration, index, findings);
    CheckRedundant(configuration, index, isOnCycle, findings);
}

} // namespace tool
