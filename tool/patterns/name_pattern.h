#ifndef STARTPLAN_TOOL_PATTERNS_NAME_PATTERN_H
#define STARTPLAN_TOOL_PATTERNS_NAME_PATTERN_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "startplan/parse_and_depend.h"

namespace tool {

// What the library accepts as a name at all, in bytes.
inline constexpr std::size_t kLongestName = 1024;

struct PatternPiece {
    ParseAndDepend::PatternType type = ParseAndDepend::PATTERN_CONST;
    std::string text; // without the brackets

    bool IsText() const { return type == ParseAndDepend::PATTERN_CONST; }
    bool IsNumber() const { return type == ParseAndDepend::PATTERN_NUM; }
    // As it is written: with the brackets.
    std::string Written() const { return IsText() ? text : "<" + text + ">"; }
};

// The pieces of a name, as the library takes it apart. A piece of text is never followed by another one.
std::vector<PatternPiece> PiecesOf(const std::string& name);

struct Interval {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
};

// Ascending, none touching the next one.
using Intervals = std::vector<Interval>;

// The numbers of a list, as the library reads it; none for a list that it cannot read.
std::optional<Intervals> ReadIntervals(const std::string& list);

// Whether the list can be read and holds 0, so that no digits match it.
bool HoldsZero(const std::string& list);

} // namespace tool

#endif
