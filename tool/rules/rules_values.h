#ifndef STARTPLAN_TOOL_RULES_RULES_VALUES_H
#define STARTPLAN_TOOL_RULES_RULES_VALUES_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kBadPermission;
extern const Rule kBadRestart;
extern const Rule kGroupDefaults;
extern const Rule kHexSurprise;
extern const Rule kNotABoolean;
extern const Rule kNumberGarbage;
extern const Rule kNumberSaturates;
extern const Rule kNumberWraps;
extern const Rule kPriorityNotNumber;
extern const Rule kPriorityRange;
extern const Rule kUserNameIgnored;

// About what the library makes of values.
std::vector<const Rule*> ValueRules();

} // namespace tool

#endif
