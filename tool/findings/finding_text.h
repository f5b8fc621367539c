#ifndef STARTPLAN_TOOL_FINDINGS_FINDING_TEXT_H
#define STARTPLAN_TOOL_FINDINGS_FINDING_TEXT_H

#include <string>

#include "tool/check/check.h"
#include "tool/command_line/session.h"

namespace tool {

// Shows all findings to people: where, what, the line with a mark below it, the chain of files, effect, help
// and related places; a summary line unless with -q.
void PrintFindingsAsText(Session& session, const CheckResult& result);

} // namespace tool

#endif
