#include "tool/check_tree.h"

namespace tool {

void CheckTree(const Configuration& /*configuration*/, Findings& /*findings*/) {}

} // namespace tool
