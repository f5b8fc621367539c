#ifndef STARTPLAN_TOOL_RULES_DEPENDENCIES_H
#define STARTPLAN_TOOL_RULES_DEPENDENCIES_H

#include "tool/rule.h"

namespace tool {

extern const Rule kCycle;
extern const Rule kDependencyIsPatternInstance;
extern const Rule kDependencySpelling;
extern const Rule kEmptyDependency;
extern const Rule kMissingDependency;
extern const Rule kRedundantDependency;
extern const Rule kSelfDependency;

} // namespace tool

#endif
