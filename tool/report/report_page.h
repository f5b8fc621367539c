#ifndef STARTPLAN_TOOL_REPORT_REPORT_PAGE_H
#define STARTPLAN_TOOL_REPORT_REPORT_PAGE_H

#include <string>

#include "tool/command_line/session.h"

namespace tool {

// The page that shows the data: one file with everything in it, which asks the network for nothing.
// `title` is text, not markup.
std::string ReportPage(const std::string& title, const Json& data);

} // namespace tool

#endif
