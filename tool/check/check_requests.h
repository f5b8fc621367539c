#ifndef STARTPLAN_TOOL_CHECK_CHECK_REQUESTS_H
#define STARTPLAN_TOOL_CHECK_CHECK_REQUESTS_H

#include <string>
#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/plan/request_plan.h"

namespace tool {

// A request that the process manager is going to make.
struct RequestToCheck {
    RequestKind kind = RequestKind::START;
    std::vector<std::string> names;
};

// @pre configuration.WasRead().
void CheckRequests(const Configuration& configuration, const std::vector<RequestToCheck>& requests,
                   Findings& findings);

} // namespace tool

#endif
