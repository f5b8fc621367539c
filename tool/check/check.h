#ifndef STARTPLAN_TOOL_CHECK_CHECK_H
#define STARTPLAN_TOOL_CHECK_CHECK_H

#include <cstddef>
#include <vector>

#include "tool/check/check_requests.h"
#include "tool/check/finding.h"
#include "tool/check/rule_levels.h"
#include "tool/configuration/configuration.h"

namespace tool {

// What the printers are given.
struct CheckResult {
    const Configuration& configuration;
    std::vector<Finding> findings; // sorted, each with its level
    std::size_t ignored = 0;       // how many more there are that comments or the baseline hide

    std::size_t Count(Level level) const;
};

// Everything that all rules find, sorted and with its level, without what comments hide; of input that was
// refused nothing but that, whatever the levels say.
CheckResult Check(const Configuration& configuration, const std::vector<RequestToCheck>& requests,
                  const RuleLevels& levels);

} // namespace tool

#endif
