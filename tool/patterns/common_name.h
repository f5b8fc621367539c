#ifndef STARTPLAN_TOOL_PATTERNS_COMMON_NAME_H
#define STARTPLAN_TOOL_PATTERNS_COMMON_NAME_H

#include <cstddef>
#include <optional>
#include <string>

#include "tool/patterns/pattern_automaton.h"

namespace tool {

// Looks for names that two patterns match.
class CommonName {
public:
    // `steps` is how many states may be looked at, in all searches together.
    explicit CommonName(std::size_t steps) : steps_(steps) {}

    // A shortest name that both match; none if there is none, or none of a length that the library takes.
    // Also none once the steps are used up, see HasGivenUp().
    std::optional<std::string> Find(const PatternAutomaton& a, const PatternAutomaton& b);

    // Whether a search ended without an answer.
    bool HasGivenUp() const { return steps_ == 0; }

private:
    std::size_t steps_;
};

} // namespace tool

#endif
