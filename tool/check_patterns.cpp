#include "tool/check_patterns.h"

namespace tool {

void CheckPatterns(const Configuration& /*configuration*/, Findings& /*findings*/) {}

} // namespace tool
