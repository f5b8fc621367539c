#ifndef STARTPLAN_TOOL_REPORT_REPORT_REQUESTS_H
#define STARTPLAN_TOOL_REPORT_REPORT_REQUESTS_H

#include <cstddef>
#include <string>

#include "tool/command_line/session.h"
#include "tool/configuration/configuration.h"
#include "tool/graph/graph_picture.h"
#include "tool/plan/request_plan.h"
#include "tool/simulation/simulation.h"

namespace tool {

// One request for all applications, and its time line.
struct ReportRequest {
    RequestPlan plan;
    TimeLine line;
};

struct ReportRequests {
    ReportRequest start;
    ReportRequest stop;
    std::string timesFile; // empty for none
};

// Both requests, each with the durations that simulate takes. `timesFile` may be empty. Throws Failure where it
// cannot be read.
ReportRequests MakeReportRequests(const Configuration& configuration, const std::string& timesFile,
                                  std::size_t jobs);

// The rounds, what is wrong with the request, and the time line as "steps": node, start, end, slack, and
// whether it is critical, one after the other.
Json RequestJson(const ReportRequest& request, const GraphPicture& picture);

} // namespace tool

#endif
