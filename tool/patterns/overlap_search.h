#ifndef STARTPLAN_TOOL_PATTERNS_OVERLAP_SEARCH_H
#define STARTPLAN_TOOL_PATTERNS_OVERLAP_SEARCH_H

#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tool/patterns/common_name.h"
#include "tool/patterns/name_pattern.h"
#include "tool/patterns/table_keys.h"

namespace tool {

// Finds pairs of keys that match a common name, without comparing each with each: only keys can have one of
// which one's lead begins with the other's.
class OverlapSearch {
public:
    struct Overlap {
        std::size_t pattern = 0; // both in the keys
        std::size_t other = 0;
        std::string name; // a shortest name that both match
    };

    // `keys` as from TableKeys(); at most `steps` are made in comparing patterns.
    OverlapSearch(const std::vector<TableKey>& keys, std::size_t steps);

    // By pattern and other key, each pair once. Of lists of numbers behind the same text, each that overlaps
    // is in a pair, but not every pair is found.
    std::vector<Overlap> Run();

    // The pattern at which the steps were used up, if they were.
    std::optional<std::size_t> StoppedAt() const { return stoppedAt_; }

private:
    // A pattern of one list of numbers behind its lead.
    struct NumberRange {
        Interval interval;
        std::size_t pattern;
    };

    void SearchFrom(std::size_t pattern);
    void SearchSameLead(std::size_t pattern);
    void Compare(std::size_t pattern, std::size_t other);
    void SearchNumbers();
    void SweepNumbers(std::vector<NumberRange>& ranges);
    bool IsSameLead(std::size_t a, std::size_t b) const;
    bool IsNumberOnly(std::size_t key) const;
    bool MatchesBoth(std::size_t a, std::size_t b, const std::string& name) const;
    std::size_t FirstBeginningWith(const std::string& beginning) const;

    const std::vector<TableKey>& keys_;
    CommonName search_;
    std::size_t comparisonsLeft_;
    std::vector<std::vector<PatternPiece>> pieces_; // of each key; empty for a plain one
    std::vector<std::size_t> notNumberOnly_;
    std::optional<PatternAutomaton> automaton_; // of the pattern at hand, once it is needed
    std::vector<Overlap> overlaps_;
    std::optional<std::size_t> stoppedAt_;
};

} // namespace tool

#endif
