#ifndef STARTPLAN_TOOL_RULES_RULES_REQUESTS_H
#define STARTPLAN_TOOL_RULES_RULES_REQUESTS_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kDependantLeftRunning;
extern const Rule kOneLevelClosure;
extern const Rule kRequestCycle;
extern const Rule kStall;
extern const Rule kUnknownName;

// About requests to start or stop applications.
std::vector<const Rule*> RequestRules();

} // namespace tool

#endif
