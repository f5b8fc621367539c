#ifndef STARTPLAN_TOOL_FINDINGS_BASELINE_H
#define STARTPLAN_TOOL_FINDINGS_BASELINE_H

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "tool/check/finding.h"

namespace tool {

// Findings that are known and shall not be reported again: by rule, file and message, without the line, which
// moves with every edit. Of several equal ones as many are hidden as were known.
class Baseline {
public:
    // Throws Failure if the file cannot be read or is no baseline.
    static Baseline Read(const std::string& path);
    // Writes the file whole or not at all. Throws Failure.
    static void Write(const std::string& path, const std::vector<Finding>& findings);

    // Takes out what is known and tells how much that was.
    std::size_t Hide(std::vector<Finding>& findings);
    // How many of its findings were not met by Hide().
    std::size_t Left() const;

private:
    using Key = std::tuple<std::string, std::string, std::string>;
    static Key KeyOf(const Finding& finding);

    std::map<Key, std::size_t> counts_;
};

} // namespace tool

#endif
