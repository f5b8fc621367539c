#ifndef STARTPLAN_TOOL_CONFIGURATION_DIFF_TEXT_H
#define STARTPLAN_TOOL_CONFIGURATION_DIFF_TEXT_H

#include "tool/configuration_diff.h"
#include "tool/session.h"

namespace tool {

void PrintDiff(Session& session, const Configuration& before, const Configuration& after,
               const ConfigurationDiff& diff);

Json DiffJson(const Configuration& before, const Configuration& after, const ConfigurationDiff& diff);

} // namespace tool

#endif
