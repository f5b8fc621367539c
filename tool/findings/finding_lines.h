#ifndef STARTPLAN_TOOL_FINDINGS_FINDING_LINES_H
#define STARTPLAN_TOOL_FINDINGS_FINDING_LINES_H

#include "tool/check/check.h"
#include "tool/command_line/session.h"

namespace tool {

// As compilers write, which editors understand: "FILE:LINE:COLUMN: warning: MESSAGE [RULE]", and a note for
// everything more.
void PrintFindingsForEditors(Session& session, const CheckResult& result);

// As commands of a workflow on a code host, which shows them beside the changed lines.
void PrintFindingsForWorkflows(Session& session, const CheckResult& result);

} // namespace tool

#endif
