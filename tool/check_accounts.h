#ifndef STARTPLAN_TOOL_CHECK_ACCOUNTS_H
#define STARTPLAN_TOOL_CHECK_ACCOUNTS_H

#include <vector>

#include "tool/configuration.h"
#include "tool/finding.h"

namespace tool {

// About owners whom the device does not know. They find nothing where this machine's accounts are asked,
// since those say nothing about the device.
std::vector<const Rule*> AccountRules();

// @pre configuration.WasRead().
void CheckAccounts(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
