// Question: does an interval list mean the numbers that its text lists, whatever the order, the overlaps
// and the nonsense in it?
// Asserts beyond not crashing: result, intervals and log lines as in the plain model; a number is in range
// exactly where one of the items as written contains it, asked for every number named, its neighbours and
// both ends; merging twice changes nothing; time in proportion to the text (allocations are counted).
// Refuses nothing. Input: the list, a newline, the piece of a name that is looked up in it.

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_patterns.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using test_support::PlainPatterns;
using Intervals = std::map<std::uint32_t, std::uint32_t>;

constexpr std::uint32_t kTop = 4294967295;

// The items of a list that is known to parse, by nothing but the syntax: "n", "a-b", "-b", "a-", "-", "".
std::vector<std::pair<std::uint32_t, std::uint32_t>> ItemsOf(const std::string& text)
{
    const auto number = [](const std::string& digits, std::uint32_t whenEmpty) {
        return digits.empty() ? whenEmpty : static_cast<std::uint32_t>(std::stoull(digits));
    };
    std::vector<std::pair<std::uint32_t, std::uint32_t>> items;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t comma = std::min(text.find(',', from), text.size());
        const std::string item = text.substr(from, comma - from);
        const std::size_t dash = item.find('-');
        if (dash == std::string::npos) {
            items.push_back({number(item, 0), number(item, 0)});
        } else {
            items.push_back({number(item.substr(0, dash), 0), number(item.substr(dash + 1), kTop)});
        }
        from = comma + 1;
    }
    if (text.empty()) {
        items.push_back({0, kTop});
    }
    return items;
}

void CheckMembers(const ParseAndDepend& library, const std::string& text, const Intervals& intervals)
{
    const auto items = ItemsOf(text);
    std::set<std::uint32_t> probes = {0, 1, kTop - 1, kTop};
    for (const auto& [start, end] : items) {
        if (probes.size() > 64) {
            break; // the product of items and probes must stay small
        }
        probes.insert({start - 1, start, start + 1, end - 1, end, end + 1});
    }
    for (const std::uint32_t probe : probes) {
        bool isListed = false;
        for (const auto& [start, end] : items) {
            isListed = isListed || (start <= probe && probe <= end);
        }
        FUZZ_REQUIRE(library.IsNumInRange(intervals, probe) == isListed);
    }
}

void CheckList(const ParseAndDepend& library, const PlainPatterns& plain, const std::string& text)
{
    Intervals intervals;
    Intervals plainIntervals;
    const fuzz::AllocationMeter meter;
    const bool isGood = library.GetIntervals(text, intervals);
    FUZZ_REQUIRE(meter.Allocations() <= 32 + text.size());
    FUZZ_REQUIRE(isGood == plain.GetIntervals(text, plainIntervals));
    FUZZ_REQUIRE(intervals == plainIntervals);
    if (!isGood) {
        return;
    }
    CheckMembers(library, text, intervals);
    library.MergeIntervals(intervals);
    FUZZ_REQUIRE(intervals == plainIntervals);
}

// The same operations one by one, on numbers taken from the bytes, near each other and near both ends.
void CheckSteps(const ParseAndDepend& library, const PlainPatterns& plain, fuzz::ByteReader bytes)
{
    Intervals intervals;
    Intervals plainIntervals;
    for (int step = 0; step < 64 && !bytes.IsAtEnd(); ++step) {
        const std::uint32_t start = bytes.Next() - 128U; // wraps: half of them near the top
        const std::uint32_t end = start + bytes.Next() % 16U;
        FUZZ_REQUIRE(library.InsertIntervals(intervals, start, end) ==
                     plain.InsertIntervals(plainIntervals, start, end));
        FUZZ_REQUIRE(intervals == plainIntervals);
    }
    library.MergeIntervals(intervals);
    plain.MergeIntervals(plainIntervals);
    FUZZ_REQUIRE(intervals == plainIntervals);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input = fuzz::TextOf(data, size);
    const std::size_t newline = input.find('\n');
    const std::string text(input.substr(0, newline));
    const std::string piece(newline == std::string_view::npos ? "" : input.substr(newline + 1));

    const ParseAndDepend library;
    Lines plainLines;
    const PlainPatterns plain(plainLines);
    LogCapture log;

    CheckList(library, plain, text);
    FUZZ_REQUIRE(library.CheckNumTypePara(text, piece) == plain.CheckNumTypePara(text, piece));
    std::uint32_t number = 7;
    std::uint32_t plainNumber = 7;
    FUZZ_REQUIRE(library.StrToUint32(piece, number) == plain.StrToUint32(piece, plainNumber));
    FUZZ_REQUIRE(number == plainNumber);
    fuzz::RequireSameLines(log.Take(), plainLines);

    CheckSteps(library, plain, fuzz::ByteReader(data, size));
    FUZZ_REQUIRE(log.Take().empty());
    return 0;
}
