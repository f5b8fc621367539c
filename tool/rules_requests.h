#ifndef STARTPLAN_TOOL_RULES_REQUESTS_H
#define STARTPLAN_TOOL_RULES_REQUESTS_H

#include "tool/rule.h"

namespace tool {

extern const Rule kDependantLeftRunning;
extern const Rule kOneLevelClosure;
extern const Rule kRequestCycle;
extern const Rule kStall;
extern const Rule kUnknownName;

} // namespace tool

#endif
