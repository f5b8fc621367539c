#include "depend/number_intervals.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <string>
#include <string_view>

#include <syslog.h>

#include "startplan/parse_and_depend.h"

namespace {

constexpr std::uint32_t kMaxNumber = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kBase = 10;

enum class Fault { NONE, NOT_A_NUMBER, OUT_OF_RANGE };

struct Number {
    std::uint32_t value = 0;
    Fault fault = Fault::NONE;
};

// Digits only, and the empty text for 0. The first fault from the left decides.
Number ReadNumber(std::string_view text)
{
    std::uint64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return {0, Fault::NOT_A_NUMBER};
        }
        value = value * kBase + static_cast<std::uint64_t>(c - '0');
        if (value > kMaxNumber) {
            return {0, Fault::OUT_OF_RANGE};
        }
    }
    return {static_cast<std::uint32_t>(value), Fault::NONE};
}

void LogFault(Fault fault, std::string_view text)
{
    if (fault == Fault::NOT_A_NUMBER) {
        syslog(LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, %s", std::string(text).c_str());
    }
    if (fault == Fault::OUT_OF_RANGE) {
        syslog(LOG_ERR, "ParseAndDepend StrToUint32: dynamic para out of range, %s",
               std::string(text).c_str());
    }
}

// As ReadNumber(), with the fault logged.
bool ReadListedNumber(std::string_view text, std::uint32_t& value)
{
    const Number number = ReadNumber(text);
    if (number.fault != Fault::NONE) {
        LogFault(number.fault, text);
        return false;
    }
    value = number.value;
    return true;
}

struct Interval {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
};

// One item of a list: "7", "3-5", "-5" from 0 or "3-" to the top.
bool ReadInterval(std::string_view item, Interval& interval)
{
    const std::size_t dash = item.find('-');
    if (dash == std::string_view::npos) {
        if (!ReadListedNumber(item, interval.start)) {
            return false;
        }
        interval.end = interval.start;
        return true;
    }
    const std::string_view before = item.substr(0, dash);
    const std::string_view after = item.substr(dash + 1);
    interval = {0, kMaxNumber};
    return (before.empty() || ReadListedNumber(before, interval.start)) &&
           (after.empty() || ReadListedNumber(after, interval.end));
}

// The digits that a text begins with, no more than fit into 32 bits whatever they are.
struct LeadingDigits {
    explicit LeadingDigits(std::string_view text)
    {
        const std::size_t most =
            std::min<std::size_t>(text.size(), std::numeric_limits<std::uint32_t>::digits10);
        for (; count < most && text[count] >= '0' && text[count] <= '9'; ++count) {
            value = value * kBase + static_cast<std::uint32_t>(text[count] - '0');
        }
    }

    std::uint32_t value = 0;
    std::size_t count = 0;
};

// ReadInterval() for the item at the front of a list, in one pass over its bytes, without the searches that
// would take most of the time of a match. Returns the item's length; npos for items that this cannot read:
// those with a fault and those with ten digits.
std::size_t ReadPlainInterval(std::string_view list, Interval& interval)
{
    const LeadingDigits start(list);
    interval = {start.value, start.value};
    std::size_t length = start.count;
    if (length < list.size() && list[length] == '-') {
        const LeadingDigits end(list.substr(length + 1));
        interval.end = end.count == 0 ? kMaxNumber : end.value;
        length += 1 + end.count;
    }
    return length == list.size() || list[length] == ',' ? length : std::string_view::npos;
}

// Gives each interval of a list to `use`, in order, until one cannot be read or `use` refuses it. A comma
// that ends the list is followed by no item.
template <class Use>
bool ForEachInterval(std::string_view list, Use use)
{
    while (!list.empty()) {
        Interval interval;
        std::size_t length = ReadPlainInterval(list, interval);
        if (length == std::string_view::npos) {
            length = std::min(list.find(','), list.size());
            if (!ReadInterval(list.substr(0, length), interval)) {
                return false;
            }
        }
        if (!use(interval)) {
            return false;
        }
        list.remove_prefix(std::min(length + 1, list.size()));
    }
    return true;
}

} // namespace

namespace startplan {

bool IsInIntervalList(std::string_view list, std::string_view text)
{
    const Number number = ReadNumber(text); // a fault in it is logged behind those in the list
    bool isListed = list.empty();
    const bool isList = ForEachInterval(list, [&number, &isListed](Interval interval) {
        isListed = isListed || (interval.start <= number.value && number.value <= interval.end);
        return interval.start <= interval.end;
    });
    if (!isList) {
        syslog(LOG_ERR, "ParseAndDepend CheckNumTypePara: GetIntervals fail, %s", std::string(list).c_str());
        return false;
    }
    if (number.fault != Fault::NONE) {
        LogFault(number.fault, text);
        return false;
    }
    return isListed;
}

} // namespace startplan

bool ParseAndDepend::CheckNumTypePara(const std::string& patternPiece, const std::string& strPiece) const
{
    return startplan::IsInIntervalList(patternPiece, strPiece);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the exported signature
bool ParseAndDepend::GetIntervals(std::string text, std::map<std::uint32_t, std::uint32_t>& intervals) const
{
    if (text.empty()) {
        intervals[0] = kMaxNumber;
        return true;
    }
    if (!ForEachInterval(text, [this, &intervals](Interval interval) {
            return InsertIntervals(intervals, interval.start, interval.end);
        })) {
        return false;
    }
    MergeIntervals(intervals);
    return true;
}

bool ParseAndDepend::InsertIntervals(std::map<std::uint32_t, std::uint32_t>& intervals, std::uint32_t start,
                                     std::uint32_t end) const
{
    if (start > end) {
        return false;
    }
    std::uint32_t& kept = intervals.try_emplace(start, end).first->second;
    kept = std::max(kept, end);
    return true;
}

void ParseAndDepend::MergeIntervals(std::map<std::uint32_t, std::uint32_t>& intervals) const
{
    auto current = intervals.begin();
    while (current != intervals.end()) {
        const auto next = std::next(current);
        if (next == intervals.end()) {
            return;
        }
        // 32 bits on purpose: an interval that ends at 4294967295 wraps to 0 here and absorbs nothing.
        const std::uint32_t reach = current->second + 1;
        if (next->first <= reach) {
            current->second = std::max(current->second, next->second);
            intervals.erase(next);
        } else {
            current = next;
        }
    }
}

bool ParseAndDepend::IsNumInRange(const std::map<std::uint32_t, std::uint32_t>& intervals,
                                  std::uint32_t num) const
{
    return std::any_of(intervals.begin(), intervals.end(), [num](const auto& interval) {
        return interval.first <= num && num <= interval.second;
    });
}

bool ParseAndDepend::StrToUint32(const std::string& str, std::uint32_t& num) const
{
    return ReadListedNumber(str, num);
}
