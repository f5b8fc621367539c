#ifndef STARTPLAN_TOOL_CHECK_REQUESTS_H
#define STARTPLAN_TOOL_CHECK_REQUESTS_H

#include <string>
#include <vector>

#include "tool/configuration.h"
#include "tool/finding.h"
#include "tool/request_plan.h"

namespace tool {

// A request that the process manager is going to make.
struct RequestToCheck {
    RequestKind kind = RequestKind::START;
    std::vector<std::string> names;
};

// About requests to start or stop applications.
std::vector<const Rule*> RequestRules();

// @pre configuration.WasRead().
void CheckRequests(const Configuration& configuration, const std::vector<RequestToCheck>& requests,
                   Findings& findings);

} // namespace tool

#endif
