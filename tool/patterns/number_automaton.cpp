#include "tool/patterns/number_automaton.h"

#include <algorithm>
#include <limits>

namespace tool {

namespace {

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();

} // namespace

NumberAutomaton::NumberAutomaton(Intervals intervals) : intervals_(std::move(intervals))
{
    StateOf({false, 0});
    for (State state = 0; state < rows_.size(); ++state) {
        for (unsigned digit = 0; digit < 10; ++digit) {
            const State next = StateOf(After(prefixes_[state], digit));
            rows_[state].next[digit] = next;
        }
    }
}

NumberAutomaton::Part NumberAutomaton::PartIn(std::uint64_t first, std::uint64_t last) const
{
    const auto found =
        std::lower_bound(intervals_.begin(), intervals_.end(), first,
                         [](const Interval& interval, std::uint64_t value) { return interval.last < value; });
    if (found == intervals_.end() || last < found->first) {
        return Part::NONE;
    }
    // Intervals do not touch, so one alone must hold all.
    return found->first <= first && last <= found->last ? Part::ALL : Part::SOME;
}

// @pre value is not 0: zeros in front of a number say nothing about its length.
NumberAutomaton::Prefix NumberAutomaton::PrefixOf(std::uint64_t value) const
{
    Prefix prefix{true, 0};
    std::uint64_t size = 1;
    for (unsigned more = 0; value * size <= kLargest; ++more, size *= 10) {
        const Part part = PartIn(value * size, value * size + size - 1);
        if (part == Part::SOME) {
            return {false, value};
        }
        if (part == Part::ALL) {
            prefix.value |= std::uint64_t{1} << more;
        }
    }
    return prefix;
}

NumberAutomaton::Prefix NumberAutomaton::After(const Prefix& prefix, unsigned digit) const
{
    if (prefix.isDecided) {
        return {true, prefix.value >> 1U};
    }
    const std::uint64_t value = prefix.value * 10 + digit;
    return value == 0 ? Prefix{false, 0} : PrefixOf(value);
}

NumberAutomaton::State NumberAutomaton::StateOf(const Prefix& prefix)
{
    if (prefix.isDecided && prefix.value == 0) {
        return kDead;
    }
    const auto [known, isNew] = states_.emplace(prefix, static_cast<State>(rows_.size()));
    if (isNew) {
        Row row;
        row.accepts = prefix.isDecided ? (prefix.value & 1U) != 0 : IsIn(prefix.value);
        rows_.push_back(row);
        prefixes_.push_back(prefix);
    }
    return known->second;
}

} // namespace tool
