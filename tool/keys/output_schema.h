#ifndef STARTPLAN_TOOL_KEYS_OUTPUT_SCHEMA_H
#define STARTPLAN_TOOL_KEYS_OUTPUT_SCHEMA_H

#include "tool/command_line/session.h"

namespace tool {

// The JSON Schemas (draft-07) of what "check" and "plan" print as JSON, for programs that read it.
Json DiagnosticsSchema();
Json PlanSchema();

} // namespace tool

#endif
