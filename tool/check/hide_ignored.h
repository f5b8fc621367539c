#ifndef STARTPLAN_TOOL_CHECK_HIDE_IGNORED_H
#define STARTPLAN_TOOL_CHECK_HIDE_IGNORED_H

#include <cstddef>
#include <vector>

#include "tool/check/finding.h"
#include "tool/check/rule_levels.h"
#include "tool/configuration/configuration.h"

namespace tool {

// Takes out what comments hide and tells how much that was. Adds a finding for each comment that hides nothing
// though its rule is looked for; `findings` are in no particular order then.
std::size_t HideIgnored(const Configuration& configuration, const RuleLevels& levels,
                        std::vector<Finding>& findings);

} // namespace tool

#endif
