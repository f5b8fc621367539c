#ifndef STARTPLAN_TOOL_FINDINGS_FINDING_SARIF_H
#define STARTPLAN_TOOL_FINDINGS_FINDING_SARIF_H

#include "tool/check/check.h"
#include "tool/command_line/session.h"

namespace tool {

// All findings in the interchange format for static analysis results, SARIF 2.1.0. Paths become URIs; relative
// ones stay relative. `isDone` is false where the work could not be done.
void PrintFindingsAsSarif(Session& session, const CheckResult& result, bool isDone);

} // namespace tool

#endif
