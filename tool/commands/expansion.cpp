#include "tool/commands/expansion.h"

#include <algorithm>
#include <limits>
#include <utility>

#include <fmt/format.h>

#include "tool/library/log_collector.h"
#include "tool/patterns/name_pattern.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kNoWheel = static_cast<std::size_t>(-1);
constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

std::uint64_t CountOf(const Intervals& intervals)
{
    std::uint64_t count = 0;
    for (const Interval& interval : intervals) {
        count += std::uint64_t{interval.last} - interval.first + 1;
    }
    return count;
}

// The numbers of one parameter, counted up like a wheel of an odometer.
struct Wheel {
    std::size_t piece = 0;
    Intervals intervals;
    std::size_t interval = 0;
    std::uint64_t number = 0;

    void Reset()
    {
        interval = 0;
        number = intervals.front().first;
    }

    // False where it starts again from its first number.
    bool Advance()
    {
        if (number < intervals[interval].last) {
            ++number;
            return true;
        }
        if (interval + 1 < intervals.size()) {
            number = intervals[++interval].first;
            return true;
        }
        Reset();
        return false;
    }
};

class Expander {
public:
    explicit Expander(const std::string& pattern) : pattern_(pattern), pieces_(PiecesOf(pattern)) {}

    Expansion Run(std::size_t limit)
    {
        expansion_.fault = FindFault();
        if (!expansion_.fault.empty()) {
            return std::move(expansion_);
        }
        MakeWheels();
        AddOpenRemarks();
        Enumerate(limit);
        AddTailRemark();
        AddNoDigitsRemarks();
        return std::move(expansion_);
    }

private:
    // Of parameters side by side only the last one takes text.
    bool TakesText(std::size_t piece) const
    {
        return piece + 1 == pieces_.size() || pieces_[piece + 1].IsText();
    }

    std::string FindFault() const
    {
        if (pattern_.empty() || pattern_.size() > kLongestName) {
            return fmt::format("a name has 1 to {} bytes", kLongestName);
        }
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            const PatternPiece& piece = pieces_[i];
            if (piece.IsNumber() && !ReadIntervals(piece.text)) {
                return fmt::format("the list \"{}\" cannot be read, so no name matches",
                                   Printable(piece.text));
            }
            if (piece.IsNumber() && !TakesText(i) && !HoldsZero(piece.text)) {
                return fmt::format("of parameters side by side only the last one takes text, and \"{}\" does "
                                   "not hold the 0 that no text counts as, so no name matches",
                                   Printable(piece.Written()));
            }
        }
        return "";
    }

    void MakeWheels()
    {
        expansion_.most = 1;
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            if (!pieces_[i].IsNumber() || !TakesText(i)) {
                continue;
            }
            Wheel wheel{i, *ReadIntervals(pieces_[i].text), 0, 0};
            wheel.Reset();
            const std::uint64_t count = CountOf(wheel.intervals);
            expansion_.most = expansion_.most > kLargest / count ? kLargest : expansion_.most * count;
            wheels_.push_back(std::move(wheel));
        }
    }

    // The name with the wheels' numbers, without that of the wheel `blank`. Open parameters as they are
    // written, or without any text.
    std::string Name(bool keepsOpen, std::size_t blank = kNoWheel) const
    {
        std::string name;
        std::size_t wheel = 0;
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            if (pieces_[i].IsText()) {
                name += pieces_[i].text;
            } else if (pieces_[i].IsNumber() && TakesText(i)) {
                name += wheel == blank ? "" : std::to_string(wheels_[wheel].number);
                ++wheel;
            } else if (!pieces_[i].IsNumber() && TakesText(i) && keepsOpen) {
                name += pieces_[i].Written();
            }
        }
        return name;
    }

    // Digits in the pattern's text may make another name of some combinations: the library tells.
    bool IsMember(std::size_t blank = kNoWheel) const
    {
        const LogCollector unheard;
        const std::string name = Name(false, blank);
        return name.empty() ? expansion_.isOpen : library_.IsDynamicParaMatch(pattern_, name);
    }

    void Enumerate(std::size_t limit)
    {
        for (std::size_t tries = 0;; ++tries) {
            expansion_.isCut = tries == limit;
            if (expansion_.isCut) {
                return;
            }
            if (IsMember()) {
                expansion_.members.push_back(Name(true));
            }
            if (!Advance()) {
                return;
            }
        }
    }

    bool Advance()
    {
        return std::any_of(wheels_.rbegin(), wheels_.rend(), [](Wheel& wheel) { return wheel.Advance(); });
    }

    void AddOpenRemarks()
    {
        bool hasAny = false;
        bool hasPath = false;
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            hasAny = hasAny || (pieces_[i].type == ParseAndDepend::PATTERN_ANY && TakesText(i));
            hasPath = hasPath || (pieces_[i].type == ParseAndDepend::PATTERN_PATH && TakesText(i));
        }
        if (hasAny) {
            expansion_.remarks.emplace_back("it is open: <*> stands for any text, the empty one included");
        }
        if (hasPath) {
            expansion_.remarks.emplace_back(
                "it is open: <*PATH> stands for any text without \"..\", the empty one included");
        }
        expansion_.isOpen = hasAny || hasPath;
    }

    void AddTailRemark()
    {
        if (!pieces_.back().IsText()) {
            return;
        }
        expansion_.isOpen = true;
        expansion_.remarks.push_back(
            fmt::format("{}it stands for every longer name as well: what follows \"{}\" is not looked at",
                        pieces_.size() == 1 ? "no pattern; " : "", Printable(pieces_.back().text)));
    }

    // The wheels stand anywhere by now.
    void AddNoDigitsRemarks()
    {
        for (Wheel& wheel : wheels_) {
            wheel.Reset();
        }
        for (std::size_t i = 0; i < wheels_.size(); ++i) {
            if (wheels_[i].number == 0 && IsMember(i)) {
                expansion_.remarks.push_back(fmt::format("\"{}\" is a member as well: no digits count as 0",
                                                         Printable(Name(true, i))));
            }
        }
    }

    const ParseAndDepend library_;
    const std::string& pattern_;
    std::vector<PatternPiece> pieces_;
    std::vector<Wheel> wheels_;
    Expansion expansion_;
};

} // namespace

Expansion Expand(const std::string& pattern, std::size_t limit)
{
    return Expander(pattern).Run(limit);
}

} // namespace tool
