#include "tool/check_entries.h"

namespace tool {

void CheckEntries(const Configuration& /*configuration*/, Findings& /*findings*/) {}

} // namespace tool
