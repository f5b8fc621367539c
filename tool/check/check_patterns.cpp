#include "tool/check/check_patterns.h"

#include "tool/check/check_pattern_overlap.h"
#include "tool/check/check_pattern_text.h"
#include "tool/check/check_prefix_capture.h"
#include "tool/patterns/table_keys.h"

namespace tool {

void CheckPatterns(const Configuration& configuration, Findings& findings)
{
    CheckPatternText(configuration, findings);
    const std::vector<TableKey> keys = TableKeys(configuration);
    CheckPrefixCapture(configuration, keys, findings);
    CheckPatternOverlap(configuration, keys, findings);
}

} // namespace tool
