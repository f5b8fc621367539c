#ifndef STARTPLAN_TOOL_RULES_RULES_H
#define STARTPLAN_TOOL_RULES_RULES_H

#include <string>
#include <string_view>
#include <vector>

#include "tool/rules/rule.h"

namespace tool {

// Every rule, by group and then by id.
const std::vector<const Rule*>& Rules();

// Null for an id that no rule has.
const Rule* FindRule(std::string_view id);

// For suggestions.
std::vector<std::string> RuleIds();

} // namespace tool

#endif
