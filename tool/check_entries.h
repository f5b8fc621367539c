#ifndef STARTPLAN_TOOL_CHECK_ENTRIES_H
#define STARTPLAN_TOOL_CHECK_ENTRIES_H

#include <vector>

#include "tool/configuration.h"
#include "tool/finding.h"

namespace tool {

// About entries and their keys.
std::vector<const Rule*> EntryRules();

// @pre configuration.WasRead().
void CheckEntries(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
