#include "tool/patterns/name_match.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

std::string NumberReason(const ParseAndDepend& library, const std::string& list, const std::string& text,
                         bool matches)
{
    std::uint32_t number = 0;
    if (!ReadIntervals(list)) {
        return "meets a list that cannot be read";
    }
    if (!library.StrToUint32(text, number)) {
        const bool isDigits = text.find_first_not_of("0123456789") == std::string::npos;
        return isDigits ? "is beyond 4294967295" : "is no number";
    }
    const std::string is = text.empty() ? "counts as 0, which is" : "is";
    return list.empty() ? is + " a number"
                        : fmt::format("{} {}in {}", is, matches ? "" : "not ", Printable(list));
}

PieceMatch MatchPiece(const ParseAndDepend& library, PatternPiece piece, std::string text)
{
    PieceMatch match{std::move(piece), std::move(text), "", true, ""};
    switch (match.piece.type) {
    case ParseAndDepend::PATTERN_NUM:
        match.matches = library.CheckNumTypePara(match.piece.text, match.text);
        match.reason = NumberReason(library, match.piece.text, match.text, match.matches);
        break;
    case ParseAndDepend::PATTERN_PATH:
        match.matches = library.CheckPathTypePara(match.piece.text, match.text);
        match.reason = match.matches ? "has no \"..\"" : "has \"..\"";
        break;
    case ParseAndDepend::PATTERN_ANY:
        match.matches = library.CheckAnyTypePara(match.piece.text, match.text);
        match.reason = "passes, as any text does";
        break;
    default:
        break;
    }
    return match;
}

// The pieces with their parts of the name; none where a piece of text is not in the name.
std::vector<PieceMatch> MatchPieces(const ParseAndDepend& library, const std::string& key,
                                    const std::string& name)
{
    const LogCollector unheard;
    std::vector<PieceMatch> matches;
    ParseAndDepend::SplitedStr split;
    library.SplitPattern(key, split);
    if (!library.SplitPara(name, split)) {
        return matches;
    }
    for (std::size_t i = 0; i < split.patternTypes.size(); ++i) {
        matches.push_back(
            MatchPiece(library, {split.patternTypes[i], split.patternStrs[i]}, split.paraStrs[i]));
    }
    // What follows a last piece of text stands in the place of that text.
    if (!matches.empty() && matches.back().piece.IsText()) {
        PieceMatch& last = matches.back();
        last.text = last.piece.text;
        std::size_t end = 0;
        for (const PieceMatch& match : matches) {
            end += match.text.size();
        }
        last.rest = name.substr(end);
    }
    return matches;
}

} // namespace

NameMatch MatchName(const ParseAndDepend& library, const std::string& name)
{
    NameMatch result;
    result.name = name;
    LogCollector log;
    const ParseAndDepend::DependsMap& table = library.GetApplicationDependsMap();
    const auto winner = library.GetAppFromDependsMap(name);
    result.lines = log.Take();
    if (winner != table.end()) {
        result.winner = winner->first;
    }
    for (const auto& [key, depends] : table) {
        const bool matches = library.IsDynamicParaMatch(key, name);
        std::vector<PieceMatch> pieces = MatchPieces(library, key, name);
        if (matches) {
            result.matching.push_back({key, std::move(pieces)});
        } else if (!pieces.empty() && key.size() <= kLongestName && name.size() <= kLongestName) {
            result.failing.push_back({key, std::move(pieces)});
        }
    }
    const auto isBefore = [&result](const KeyMatch& a, const KeyMatch& b) {
        return std::make_tuple(a.key != result.winner, std::string_view(a.key)) <
               std::make_tuple(b.key != result.winner, std::string_view(b.key));
    };
    std::sort(result.matching.begin(), result.matching.end(), isBefore);
    std::sort(result.failing.begin(), result.failing.end(), isBefore);
    return result;
}

} // namespace tool
