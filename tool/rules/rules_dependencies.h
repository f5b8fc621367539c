#ifndef STARTPLAN_TOOL_RULES_RULES_DEPENDENCIES_H
#define STARTPLAN_TOOL_RULES_RULES_DEPENDENCIES_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kCycle;
extern const Rule kDependencyIsPatternInstance;
extern const Rule kDependencySpelling;
extern const Rule kEmptyDependency;
extern const Rule kMissingDependency;
extern const Rule kRedundantDependency;
extern const Rule kSelfDependency;

// About what waits for what.
std::vector<const Rule*> DependencyRules();

} // namespace tool

#endif
