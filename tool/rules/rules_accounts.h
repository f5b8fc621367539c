#ifndef STARTPLAN_TOOL_RULES_RULES_ACCOUNTS_H
#define STARTPLAN_TOOL_RULES_RULES_ACCOUNTS_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kUnknownGroup;
extern const Rule kUnknownUser;

// About owners whom the device does not know. They find nothing where this machine's accounts are asked,
// since those say nothing about the device.
std::vector<const Rule*> AccountRules();

} // namespace tool

#endif
