#include "tool/patterns/name_pattern.h"

#include <algorithm>
#include <map>

#include "tool/library/log_collector.h"

namespace tool {

std::vector<PatternPiece> PiecesOf(const std::string& name)
{
    ParseAndDepend::SplitedStr split;
    ParseAndDepend().SplitPattern(name, split);
    std::vector<PatternPiece> pieces;
    for (std::size_t i = 0; i < split.patternTypes.size(); ++i) {
        pieces.push_back({split.patternTypes[i], split.patternStrs[i]});
    }
    return pieces;
}

std::optional<Intervals> ReadIntervals(const std::string& list)
{
    const LogCollector unheard;
    std::map<std::uint32_t, std::uint32_t> read;
    if (!ParseAndDepend().GetIntervals(list, read)) {
        return std::nullopt;
    }
    Intervals intervals;
    for (const auto& [first, last] : read) {
        // The library leaves intervals apart where one of them reaches the largest number.
        if (!intervals.empty() && first <= std::uint64_t{intervals.back().last} + 1) {
            intervals.back().last = std::max(intervals.back().last, last);
            continue;
        }
        intervals.push_back({first, last});
    }
    return intervals;
}

bool HoldsZero(const std::string& list)
{
    const auto intervals = ReadIntervals(list);
    return intervals && !intervals->empty() && intervals->front().first == 0;
}

} // namespace tool
