#ifndef STARTPLAN_TOOL_FINDING_JSON_H
#define STARTPLAN_TOOL_FINDING_JSON_H

#include "tool/check.h"
#include "tool/session.h"

namespace tool {

// All findings as JSON, beside the library's result and what was read.
void PrintFindingsAsJson(Session& session, const CheckResult& result);

} // namespace tool

#endif
