#include "tool/patterns/overlap_search.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "tool/library/log_collector.h"

namespace tool {

namespace {

// Enough for a pattern that matches everything.
constexpr std::size_t kComparisonsForEachKey = 4;

// The bytes that may follow a pattern's lead in a name.
std::bitset<256> BytesBehindLead(const std::vector<PatternPiece>& pieces)
{
    std::size_t i = pieces.front().IsText() ? 1 : 0;
    while (i + 1 < pieces.size() && !pieces[i + 1].IsText()) {
        ++i; // of parameters side by side the last one takes the text
    }
    std::bitset<256> bytes;
    if (!pieces[i].IsNumber()) {
        return bytes.set();
    }
    for (unsigned char digit = '0'; digit <= '9'; ++digit) {
        bytes.set(digit);
    }
    if (i + 1 < pieces.size()) {
        bytes.set(static_cast<unsigned char>(pieces[i + 1].text.front()));
    }
    return bytes;
}

} // namespace

OverlapSearch::OverlapSearch(const std::vector<TableKey>& keys, std::size_t steps)
    : keys_(keys), search_(steps), comparisonsLeft_(kComparisonsForEachKey * keys.size() + steps / 10)
{}

std::vector<OverlapSearch::Overlap> OverlapSearch::Run()
{
    pieces_.resize(keys_.size());
    for (std::size_t key = 0; key < keys_.size(); ++key) {
        if (keys_[key].isPattern) {
            pieces_[key] = PiecesOf(*keys_[key].name);
        }
        if (!IsNumberOnly(key)) {
            notNumberOnly_.push_back(key);
        }
    }
    SearchNumbers();
    for (std::size_t key = 0; key < keys_.size() && !stoppedAt_; ++key) {
        if (keys_[key].isPattern) {
            SearchFrom(key);
        }
    }
    std::sort(overlaps_.begin(), overlaps_.end(), [](const Overlap& a, const Overlap& b) {
        return std::tie(a.pattern, a.other) < std::tie(b.pattern, b.other);
    });
    return std::move(overlaps_);
}

// Against all keys whose lead begins with the pattern's own, those with the same lead once.
void OverlapSearch::SearchFrom(std::size_t pattern)
{
    const std::string lead(keys_[pattern].lead);
    automaton_.reset();
    SearchSameLead(pattern);
    std::size_t other = FirstBeginningWith(lead + '\0');
    const std::bitset<256> bytes = BytesBehindLead(pieces_[pattern]);
    while (other < keys_.size() && BeginsWith(keys_[other].lead, lead) && !stoppedAt_) {
        const auto byte = static_cast<unsigned char>(keys_[other].lead[lead.size()]);
        if (!bytes[byte]) {
            other = byte == 0xFF ? keys_.size() : FirstBeginningWith(lead + static_cast<char>(byte + 1));
            continue;
        }
        Compare(pattern, other++);
    }
}

void OverlapSearch::SearchSameLead(std::size_t pattern)
{
    if (!IsNumberOnly(pattern)) {
        for (std::size_t other = pattern + 1; IsSameLead(pattern, other) && !stoppedAt_; ++other) {
            Compare(pattern, other);
        }
        return;
    }
    // Lists of numbers have been compared with each other.
    auto other = std::upper_bound(notNumberOnly_.begin(), notNumberOnly_.end(), pattern);
    for (; other != notNumberOnly_.end() && IsSameLead(pattern, *other) && !stoppedAt_; ++other) {
        Compare(pattern, *other);
    }
}

void OverlapSearch::Compare(std::size_t pattern, std::size_t other)
{
    const std::string& name = *keys_[other].name;
    if (comparisonsLeft_ == 0) {
        stoppedAt_ = pattern;
        return;
    }
    --comparisonsLeft_;
    if (!keys_[other].isPattern && MatchesBoth(pattern, other, name)) {
        overlaps_.push_back({pattern, other, name});
        return;
    }
    if (!automaton_) {
        automaton_.emplace(pieces_[pattern]);
    }
    const PatternAutomaton others(keys_[other].isPattern
                                      ? pieces_[other]
                                      : std::vector<PatternPiece>{{ParseAndDepend::PATTERN_CONST, name}});
    const auto common = search_.Find(*automaton_, others);
    if (search_.HasGivenUp()) {
        stoppedAt_ = pattern;
    } else if (common && MatchesBoth(pattern, other, *common)) {
        overlaps_.push_back({pattern, other, *common});
    }
}

bool OverlapSearch::IsSameLead(std::size_t a, std::size_t b) const
{
    return b < keys_.size() && keys_[a].lead == keys_[b].lead;
}

bool OverlapSearch::IsNumberOnly(std::size_t key) const
{
    const std::vector<PatternPiece>& pieces = pieces_[key];
    return !pieces.empty() && pieces.back().IsNumber() &&
           (pieces.size() == 1 || (pieces.size() == 2 && pieces.front().IsText()));
}

void OverlapSearch::SearchNumbers()
{
    std::map<std::string_view, std::vector<NumberRange>> rangesByLead;
    for (std::size_t key = 0; key < keys_.size(); ++key) {
        if (!IsNumberOnly(key)) {
            continue;
        }
        if (const auto intervals = ReadIntervals(pieces_[key].back().text)) {
            for (const Interval& interval : *intervals) {
                rangesByLead[keys_[key].lead].push_back({interval, key});
            }
        }
    }
    for (auto& [lead, ranges] : rangesByLead) {
        SweepNumbers(ranges);
    }
}

// In ascending order of their first numbers, a range overlaps with one before it where that one reaches
// farthest, or with none.
void OverlapSearch::SweepNumbers(std::vector<NumberRange>& ranges)
{
    std::sort(ranges.begin(), ranges.end(), [](const NumberRange& a, const NumberRange& b) {
        return std::tie(a.interval.first, a.pattern) < std::tie(b.interval.first, b.pattern);
    });
    std::map<std::pair<std::size_t, std::size_t>, std::string> found;
    const NumberRange* farthest = nullptr;
    for (const NumberRange& range : ranges) {
        if (farthest != nullptr && range.interval.first <= farthest->interval.last &&
            range.pattern != farthest->pattern) {
            const auto pair = std::minmax(range.pattern, farthest->pattern);
            const std::string name =
                std::string(keys_[range.pattern].lead) + std::to_string(range.interval.first);
            if (MatchesBoth(pair.first, pair.second, name)) {
                found.emplace(pair, name);
            }
        }
        if (farthest == nullptr || range.interval.last > farthest->interval.last) {
            farthest = &range;
        }
    }
    for (const auto& [pair, name] : found) {
        overlaps_.push_back({pair.first, pair.second, name});
    }
}

// The library has the last word.
bool OverlapSearch::MatchesBoth(std::size_t a, std::size_t b, const std::string& name) const
{
    const LogCollector unheard;
    const ParseAndDepend library;
    return library.IsDynamicParaMatch(*keys_[a].name, name) &&
           library.IsDynamicParaMatch(*keys_[b].name, name);
}

std::size_t OverlapSearch::FirstBeginningWith(const std::string& beginning) const
{
    const auto found =
        std::lower_bound(keys_.begin(), keys_.end(), beginning,
                         [](const TableKey& key, const std::string& text) { return key.lead < text; });
    return static_cast<std::size_t>(found - keys_.begin());
}

} // namespace tool
