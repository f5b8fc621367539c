#include "depend/name_patterns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <syslog.h>

#include "depend/number_intervals.h"
#include "depend/short_text.h"
#include "startplan/parse_and_depend.h"

namespace {

using PatternType = ParseAndDepend::PatternType;
using startplan::FindShort;

constexpr std::string_view kParentDirectory = "..";

// One piece of a pattern, and where the rest of it begins.
struct Piece {
    PatternType type = ParseAndDepend::PATTERN_CONST;
    std::string_view text;  // without the brackets
    std::size_t length = 0; // in the pattern, with them
};

PatternType DynamicType(std::string_view inner)
{
    if (inner.empty() || inner.front() != '*') {
        return ParseAndDepend::PATTERN_NUM;
    }
    if (inner.size() == 1) {
        return ParseAndDepend::PATTERN_ANY;
    }
    return inner == "*PATH" ? ParseAndDepend::PATTERN_PATH : ParseAndDepend::PATTERN_NUM;
}

// The first piece of what is left of a pattern, which is not empty.
Piece NextPiece(std::string_view rest)
{
    const std::size_t open = FindShort(rest, '<');
    const std::size_t close = FindShort(rest, '>');
    if (open == std::string_view::npos || close == std::string_view::npos || close <= open) {
        return {ParseAndDepend::PATTERN_CONST, rest, rest.size()};
    }
    if (open > 0) {
        return {ParseAndDepend::PATTERN_CONST, rest.substr(0, open), open};
    }
    const std::string_view inner = rest.substr(1, close - 1);
    return {DynamicType(inner), inner, close + 1};
}

bool IsMatch(PatternType type, std::string_view patternPiece, std::string_view text)
{
    switch (type) {
    case ParseAndDepend::PATTERN_NUM:
        return startplan::IsInIntervalList(patternPiece, text);
    case ParseAndDepend::PATTERN_PATH:
        return text.find(kParentDirectory) == std::string_view::npos;
    default:
        return true;
    }
}

// The dynamic pieces of one pattern, each with the part of the name that belongs to it. Places in the two
// texts, on the stack, and not written before they are used: a look-up in a table matches a name against
// every key.
class DynamicPieces {
public:
    DynamicPieces(std::string_view pattern, std::string_view name) : pattern_(pattern), name_(name) {}

    void Add(const Piece& piece) { pieces_[count_++] = {piece.type, Place(pattern_, piece.text), {0, 0}}; }

    void SetLastText(std::string_view text) { pieces_[count_ - 1].text = Place(name_, text); }

    bool AllMatch() const
    {
        return std::all_of(pieces_, pieces_ + count_, [this](const Entry& entry) {
            return IsMatch(entry.type, Text(pattern_, entry.pattern), Text(name_, entry.text));
        });
    }

private:
    struct Range {
        std::uint16_t begin;
        std::uint16_t size;
    };
    struct Entry {
        PatternType type;
        Range pattern;
        Range text;
    };

    static Range Place(std::string_view whole, std::string_view part)
    {
        return {static_cast<std::uint16_t>(part.data() - whole.data()),
                static_cast<std::uint16_t>(part.size())};
    }
    static std::string_view Text(std::string_view whole, Range range)
    {
        return whole.substr(range.begin, range.size);
    }

    std::string_view pattern_;
    std::string_view name_;
    std::size_t count_ = 0;
    Entry pieces_[startplan::kLongestName / 2]; // a dynamic piece takes two brackets at the least
};

// The length of what `pattern` has in front of its first '<', where `name` begins with that; npos where it
// does not.
std::size_t MatchUpToBracket(std::string_view pattern, std::string_view name)
{
    const std::size_t most = std::min(pattern.size(), name.size());
    std::size_t i = 0;
    while (i < most && pattern[i] == name[i] && pattern[i] != '<') {
        ++i;
    }
    return i == pattern.size() || pattern[i] == '<' ? i : std::string_view::npos;
}

// Gives each dynamic piece of a pattern its part of the name; false where a literal is not in the name.
// Both texts begin behind the pattern's leading literal.
bool SplitName(std::string_view restOfPattern, std::string_view rest, DynamicPieces& dynamicPieces)
{
    bool isLastDynamic = false;
    while (!restOfPattern.empty()) {
        const Piece piece = NextPiece(restOfPattern);
        restOfPattern.remove_prefix(piece.length);
        isLastDynamic = piece.type != ParseAndDepend::PATTERN_CONST;
        if (isLastDynamic) {
            dynamicPieces.Add(piece);
            continue;
        }
        const std::size_t found = FindShort(rest, piece.text);
        if (found == std::string_view::npos) {
            return false;
        }
        if (found > 0) {
            dynamicPieces.SetLastText(rest.substr(0, found));
        }
        rest.remove_prefix(found + piece.text.size());
    }
    if (isLastDynamic && !rest.empty()) {
        dynamicPieces.SetLastText(rest);
    }
    return true;
}

} // namespace

namespace startplan {

std::string_view LeadingLiteral(std::string_view pattern)
{
    const Piece first = NextPiece(pattern);
    return first.type == ParseAndDepend::PATTERN_CONST ? first.text : std::string_view();
}

bool MatchesPattern(std::string_view pattern, std::string_view name)
{
    if (!HasMatchableLength(pattern) || !HasMatchableLength(name)) {
        syslog(LOG_ERR, "ParseAndDepend IsDynamicParaMatch: dynamic para invalid, pattern=%d, str=%d",
               static_cast<int>(pattern.size()), static_cast<int>(name.size()));
        return false;
    }
    // Decides most matches within a few bytes.
    const std::size_t open = MatchUpToBracket(pattern, name);
    if (open == std::string_view::npos) {
        return false;
    }
    if (open == pattern.size()) {
        return true; // one literal; what follows it in the name is never checked
    }
    const std::size_t close = pattern.find('>');
    if (close == std::string_view::npos || close < open) {
        return BeginsWith(name, pattern); // brackets that hold no piece: one literal as well
    }
    if (close + 1 == pattern.size()) { // most patterns: one dynamic piece, at the end
        const std::string_view inner = pattern.substr(open + 1, close - open - 1);
        return IsMatch(DynamicType(inner), inner, name.substr(open));
    }

    // All literals are looked for before any dynamic piece is checked: checks log, a missing literal does
    // not.
    DynamicPieces dynamicPieces(pattern, name);
    return SplitName(pattern.substr(open), name.substr(open), dynamicPieces) && dynamicPieces.AllMatch();
}

} // namespace startplan

bool ParseAndDepend::IsDynamicPara(const std::string& para) const
{
    const std::size_t open = para.find('<');
    const std::size_t close = para.find('>');
    return open != std::string::npos && close != std::string::npos && open < close;
}

bool ParseAndDepend::IsDynamicParaMatch(const std::string& pattern, const std::string& str) const
{
    return startplan::MatchesPattern(pattern, str);
}

void ParseAndDepend::SplitPattern(const std::string& pattern, SplitedStr& out) const
{
    for (std::string_view rest = pattern; !rest.empty();) {
        const Piece piece = NextPiece(rest);
        out.patternTypes.push_back(piece.type);
        out.patternStrs.emplace_back(piece.text);
        rest.remove_prefix(piece.length);
    }
}

bool ParseAndDepend::SplitPara(const std::string& str, SplitedStr& split) const
{
    const std::size_t count = split.patternTypes.size();
    split.paraStrs.resize(count);
    std::string_view rest = str;
    for (std::size_t i = 0; i < count; ++i) {
        if (split.patternTypes[i] != PATTERN_CONST) {
            continue;
        }
        const std::string& literal = split.patternStrs[i];
        const std::size_t found = rest.find(literal);
        if (found == std::string_view::npos || (i == 0 && found != 0)) {
            return false;
        }
        split.paraStrs[i] = literal;
        if (i > 0 && found > 0) {
            split.paraStrs[i - 1] = rest.substr(0, found);
        }
        rest.remove_prefix(found + literal.size());
    }
    // Over a last literal's own text too: what follows it in the name is never checked.
    if (count > 0 && !rest.empty()) {
        split.paraStrs[count - 1] = rest;
    }
    return true;
}

bool ParseAndDepend::CheckPathTypePara(const std::string& patternPiece, const std::string& strPiece) const
{
    return IsMatch(PATTERN_PATH, patternPiece, strPiece);
}

bool ParseAndDepend::CheckAnyTypePara(const std::string& patternPiece, const std::string& strPiece) const
{
    return IsMatch(PATTERN_ANY, patternPiece, strPiece);
}
