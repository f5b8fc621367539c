#ifndef STARTPLAN_TOOL_REPORT_REPORT_DATA_H
#define STARTPLAN_TOOL_REPORT_REPORT_DATA_H

#include "tool/check/check.h"
#include "tool/command_line/session.h"
#include "tool/report/report_requests.h"

namespace tool {

// All that the page shows. Every text in it is printable. Names are told once, in the graph's nodes; everything
// else names a node by its number.
Json ReportData(const CheckResult& result, const ReportRequests& requests);

} // namespace tool

#endif
