#ifndef STARTPLAN_TOOL_RULES_VALUES_H
#define STARTPLAN_TOOL_RULES_VALUES_H

#include "tool/rule.h"

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

} // namespace tool

#endif
