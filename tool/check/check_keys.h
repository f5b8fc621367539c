#ifndef STARTPLAN_TOOL_CHECK_CHECK_KEYS_H
#define STARTPLAN_TOOL_CHECK_CHECK_KEYS_H

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"

namespace tool {

// The rules about the keys of all kinds of files: unknown, repeated, empty, with a value of the wrong kind.
void CheckKeys(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
