#include "tool/check_dependencies.h"

namespace tool {

void CheckDependencies(const Configuration& /*configuration*/, Findings& /*findings*/) {}

} // namespace tool
