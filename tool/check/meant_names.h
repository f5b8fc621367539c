#ifndef STARTPLAN_TOOL_CHECK_MEANT_NAMES_H
#define STARTPLAN_TOOL_CHECK_MEANT_NAMES_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tool/configuration/dependency_index.h"

namespace tool {

// Which configured names may have been meant by one that is not configured. Made when the first one is
// missing. Answers are numbers in the index, or kNone.
class MeantNames {
public:
    explicit MeantNames(const DependencyIndex& index);

    // A pattern that stands for the name.
    std::size_t PatternFor(std::string_view name);
    // The same name but for letter case and blanks.
    std::size_t NearMissOf(std::string_view name) const;
    // The nearest name; after many names without an answer there are no more answers, since each takes a
    // walk over all names.
    std::size_t NearestTo(std::string_view name);

private:
    const DependencyIndex& index_;
    std::vector<std::string> names_;
    std::map<std::string, std::size_t> folded_;
    std::vector<std::pair<std::string_view, std::size_t>> patterns_; // by leading text
    std::map<std::string, std::size_t, std::less<>> nearest_;
    std::size_t matchesLeft_;
    std::size_t comparisonsLeft_;
};

} // namespace tool

#endif
