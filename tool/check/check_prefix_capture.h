#ifndef STARTPLAN_TOOL_CHECK_CHECK_PREFIX_CAPTURE_H
#define STARTPLAN_TOOL_CHECK_CHECK_PREFIX_CAPTURE_H

#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/patterns/table_keys.h"

namespace tool {

// Plain names that other names begin with, where that can change what a request does. `keys` as from
// TableKeys().
void CheckPrefixCapture(const Configuration& configuration, const std::vector<TableKey>& keys,
                        Findings& findings);

} // namespace tool

#endif
