#ifndef STARTPLAN_TOOL_PATTERNS_NAME_MATCH_H
#define STARTPLAN_TOOL_PATTERNS_NAME_MATCH_H

#include <optional>
#include <string>
#include <vector>

#include "startplan/parse_and_depend.h"
#include "tool/library/log_collector.h"
#include "tool/patterns/name_pattern.h"

namespace tool {

// One piece of a key, and the part of the name that belongs to it.
struct PieceMatch {
    PatternPiece piece;
    std::string text; // what the piece takes of the name
    std::string rest; // behind a last piece of text: what the library does not look at
    bool matches = true;
    std::string reason; // in words; empty for text
};

struct KeyMatch {
    std::string key;
    std::vector<PieceMatch> pieces;
};

// What a look-up of one name does.
struct NameMatch {
    std::string name;
    std::optional<std::string> winner; // the key that the library's look-up takes
    std::vector<KeyMatch> matching;    // every key that matches: the winner, then the others ascending
    std::vector<KeyMatch> failing;     // patterns whose text fits and whose parameters do not; ascending
    LogLines lines;                    // what the library logs during the look-up
};

// All verdicts are the library's own.
NameMatch MatchName(const ParseAndDepend& library, const std::string& name);

} // namespace tool

#endif
