#ifndef STARTPLAN_TOOL_CHECK_H
#define STARTPLAN_TOOL_CHECK_H

#include <vector>

#include "tool/check_requests.h"
#include "tool/configuration.h"
#include "tool/finding.h"

namespace tool {

// Everything that all rules find, sorted; of input that was refused nothing but that.
std::vector<Finding> Check(const Configuration& configuration, const std::vector<RequestToCheck>& requests);

} // namespace tool

#endif
