#ifndef STARTPLAN_TOOL_CHECK_FINDING_AT_H
#define STARTPLAN_TOOL_CHECK_FINDING_AT_H

#include <string>

#include "tool/check/finding.h"

namespace tool {

// The three texts of a finding, see Finding.
struct Wording {
    std::string message;
    std::string effect;
    std::string help;
};

// A finding about one use in the file of a visit, which is marked as a whole.
Finding FindingAt(const SourceTree& tree, std::size_t visit, const NodeUse& use, const Rule& rule,
                  Wording text);

} // namespace tool

#endif
