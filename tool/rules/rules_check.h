#ifndef STARTPLAN_TOOL_RULES_RULES_CHECK_H
#define STARTPLAN_TOOL_RULES_RULES_CHECK_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kRefusedInput;
extern const Rule kUnusedIgnore;

// About the check itself.
std::vector<const Rule*> CheckRules();

} // namespace tool

#endif
