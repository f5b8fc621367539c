#ifndef STARTPLAN_TOOL_FINDINGS_FINDING_JSON_H
#define STARTPLAN_TOOL_FINDINGS_FINDING_JSON_H

#include "tool/check/check.h"
#include "tool/command_line/session.h"

namespace tool {

// All findings as JSON, beside the library's result and what was read.
void PrintFindingsAsJson(Session& session, const CheckResult& result);

} // namespace tool

#endif
