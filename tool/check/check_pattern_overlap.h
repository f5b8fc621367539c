#ifndef STARTPLAN_TOOL_CHECK_CHECK_PATTERN_OVERLAP_H
#define STARTPLAN_TOOL_CHECK_CHECK_PATTERN_OVERLAP_H

#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/patterns/table_keys.h"

namespace tool {

// Names that a pattern and another entry both match, but for those that begin with a plain name, which are
// found by CheckPrefixCapture(). `keys` as from TableKeys().
void CheckPatternOverlap(const Configuration& configuration, const std::vector<TableKey>& keys,
                         Findings& findings);

} // namespace tool

#endif
