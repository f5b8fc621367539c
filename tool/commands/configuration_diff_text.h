#ifndef STARTPLAN_TOOL_COMMANDS_CONFIGURATION_DIFF_TEXT_H
#define STARTPLAN_TOOL_COMMANDS_CONFIGURATION_DIFF_TEXT_H

#include "tool/command_line/session.h"
#include "tool/commands/configuration_diff.h"

namespace tool {

void PrintDiff(Session& session, const Configuration& before, const Configuration& after,
               const ConfigurationDiff& diff);

Json DiffJson(const Configuration& before, const Configuration& after, const ConfigurationDiff& diff);

} // namespace tool

#endif
