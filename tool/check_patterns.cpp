#include "tool/check_patterns.h"

#include "tool/check_pattern_overlap.h"
#include "tool/check_pattern_text.h"
#include "tool/check_prefix_capture.h"
#include "tool/table_keys.h"

namespace tool {

void CheckPatterns(const Configuration& configuration, Findings& findings)
{
    CheckPatternText(configuration, findings);
    const std::vector<TableKey> keys = TableKeys(configuration);
    CheckPrefixCapture(configuration, keys, findings);
    CheckPatternOverlap(configuration, keys, findings);
}

} // namespace tool
