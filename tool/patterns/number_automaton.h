#ifndef STARTPLAN_TOOL_PATTERNS_NUMBER_AUTOMATON_H
#define STARTPLAN_TOOL_PATTERNS_NUMBER_AUTOMATON_H

#include <array>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "tool/patterns/name_pattern.h"

namespace tool {

// Reads a decimal number digit by digit and tells whether it is in a list of intervals: a finite automaton,
// so that two patterns can be compared for all names at once. No digits are 0, and leading zeros do not
// count.
class NumberAutomaton {
public:
    using State = std::uint32_t;
    static constexpr State kStart = 0;
    static constexpr State kDead = static_cast<State>(-1); // no digits can follow

    explicit NumberAutomaton(Intervals intervals);

    State Next(State state, unsigned digit) const { return rows_[state].next[digit]; }
    bool Accepts(State state) const { return rows_[state].accepts; }

private:
    // What can be known about a number of which only the first digits are read. Either every way to go on
    // is decided by how many digits follow (bit n: with n more digits the number is in the list), or not;
    // then the digits themselves are kept.
    struct Prefix {
        bool isDecided = false;
        std::uint64_t value = 0; // the digits read so far, or the bits
        bool operator<(const Prefix& other) const
        {
            return std::make_pair(isDecided, value) < std::make_pair(other.isDecided, other.value);
        }
    };
    struct Row {
        bool accepts = false;
        std::array<State, 10> next = {};
    };
    enum class Part { NONE, SOME, ALL };

    Part PartIn(std::uint64_t first, std::uint64_t last) const;
    Prefix PrefixOf(std::uint64_t value) const;
    bool IsIn(std::uint64_t value) const { return PartIn(value, value) == Part::ALL; }
    State StateOf(const Prefix& prefix);
    Prefix After(const Prefix& prefix, unsigned digit) const;

    Intervals intervals_;
    std::vector<Row> rows_;
    std::vector<Prefix> prefixes_; // of each row
    std::map<Prefix, State> states_;
};

} // namespace tool

#endif
