#ifndef STARTPLAN_TOOL_RULES_RULES_PATTERNS_H
#define STARTPLAN_TOOL_RULES_RULES_PATTERNS_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kAdjacentDynamic;
extern const Rule kBadInterval;
extern const Rule kEmptyIntervalItem;
extern const Rule kNameTooLong;
extern const Rule kOverlapLimit;
extern const Rule kPatternOverlap;
extern const Rule kPrefixCapture;
extern const Rule kUnanchoredTail;

// About names that are patterns.
std::vector<const Rule*> PatternRules();

} // namespace tool

#endif
