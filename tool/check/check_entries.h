#ifndef STARTPLAN_TOOL_CHECK_CHECK_ENTRIES_H
#define STARTPLAN_TOOL_CHECK_CHECK_ENTRIES_H

#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"

namespace tool {

// @pre configuration.WasRead().
void CheckEntries(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
