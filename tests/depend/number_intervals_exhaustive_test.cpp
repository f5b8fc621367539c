// Interval lists next to the plain reader of tests/support, and next to one bit for each number.

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_patterns.h"
#include "tests/support/random_seed.h"
#include "tests/support/short_texts.h"

namespace {

using test_support::EveryText;
using test_support::Lines;
using test_support::LogCapture;
using test_support::PlainPatterns;
using test_support::Random;
using Intervals = std::map<std::uint32_t, std::uint32_t>;

constexpr std::uint32_t kTop = 4294967295;
constexpr std::size_t kNumbers = 128;

// Numbers 0 to 126, and the top in the place of 127.
using Bitmap = std::bitset<kNumbers>;

std::uint32_t NumberAt(std::size_t place)
{
    return place == kNumbers - 1 ? kTop : static_cast<std::uint32_t>(place);
}

void SetBits(Bitmap& bitmap, std::uint32_t start, std::uint32_t end)
{
    for (std::size_t place = 0; place < kNumbers; ++place) {
        if (start <= NumberAt(place) && NumberAt(place) <= end) {
            bitmap.set(place);
        }
    }
}

Bitmap BitsOf(const ParseAndDepend& numbers, const Intervals& intervals)
{
    Bitmap bitmap;
    for (std::size_t place = 0; place < kNumbers; ++place) {
        bitmap[place] = numbers.IsNumInRange(intervals, NumberAt(place));
    }
    return bitmap;
}

class NumberIntervalsExhaustiveTest : public ::testing::Test {
protected:
    void ExpectSameLog(const std::string& about)
    {
        const Lines lines = log_.Take();
        ASSERT_EQ(plainLines_, lines) << about;
        plainLines_.clear();
    }

    const ParseAndDepend numbers_{};
    Lines plainLines_;
    PlainPatterns plain_{plainLines_};
    LogCapture log_;
};

TEST_F(NumberIntervalsExhaustiveTest, EveryShortListIsReadAsThePlainOne)
{
    for (const std::string& list : EveryText("012-,", 6)) {
        Intervals plain;
        Intervals intervals;
        ASSERT_EQ(plain_.GetIntervals(list, plain), numbers_.GetIntervals(list, intervals)) << list;
        ASSERT_EQ(plain, intervals) << list;
        ExpectSameLog(list);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(NumberIntervalsExhaustiveTest, EveryShortListHasTheNumbersOfThePlainOne)
{
    for (const std::string& list : EveryText("012-,", 6)) {
        for (const char* number : {"", "1", "2", "11", "x"}) {
            ASSERT_EQ(plain_.CheckNumTypePara(list, number), numbers_.CheckNumTypePara(list, number))
                << list << " has " << number;
        }
        ExpectSameLog(list);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(NumberIntervalsExhaustiveTest, EveryShortTextIsANumberAsThePlainOne)
{
    for (const std::string& text : EveryText("0129+- x", 4)) {
        std::uint32_t plain = 99;
        std::uint32_t number = 99;
        ASSERT_EQ(plain_.StrToUint32(text, plain), numbers_.StrToUint32(text, number)) << text;
        ASSERT_EQ(plain, number) << text;
        ExpectSameLog(text);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(NumberIntervalsExhaustiveTest, NumbersAroundTheTopAreReadAsThePlainOnes)
{
    Random random;
    for (int round = 0; round < 5000 && !HasFatalFailure(); ++round) {
        const std::string text =
            random.Text("0", 3) + "429496729" + random.Text("3456", 2) + random.Text("0x", 1);
        std::uint32_t plain = 99;
        std::uint32_t number = 99;
        ASSERT_EQ(plain_.StrToUint32(text, plain), numbers_.StrToUint32(text, number)) << text;
        ASSERT_EQ(plain, number) << text;
        ExpectSameLog(text);
    }
}

// Random lists, item by item into a bitmap: merging may change the intervals, never the numbers.
TEST_F(NumberIntervalsExhaustiveTest, RandomListsHoldTheNumbersOfTheirItems)
{
    Random random;
    for (int round = 0; round < 2000; ++round) {
        Bitmap expected;
        std::string list;
        for (std::size_t items = 1 + random.Below(8); items > 0; --items) {
            const auto start = static_cast<std::uint32_t>(random.Below(100));
            const auto end = static_cast<std::uint32_t>(start + random.Below(15));
            const std::size_t kind = random.Below(12);
            list += list.empty() ? "" : ",";
            if (kind == 0) {
                list += std::to_string(start) + "-";
                SetBits(expected, start, kTop);
            } else if (kind == 1) {
                list += "-" + std::to_string(start);
                SetBits(expected, 0, start);
            } else if (kind < 6) {
                list += std::to_string(start);
                SetBits(expected, start, start);
            } else {
                list += std::to_string(start) + "-" + std::to_string(end);
                SetBits(expected, start, end);
            }
        }
        SCOPED_TRACE(list);
        Intervals intervals;

        ASSERT_TRUE(numbers_.GetIntervals(list, intervals));

        ASSERT_EQ(expected, BitsOf(numbers_, intervals));
        for (std::size_t place = 0; place < kNumbers; ++place) {
            const bool isListed = numbers_.CheckNumTypePara(list, std::to_string(NumberAt(place)));
            ASSERT_EQ(expected[place], isListed) << NumberAt(place);
        }
    }
}

TEST_F(NumberIntervalsExhaustiveTest, MergedIntervalsBelowTheTopKeepAGapBetweenThem)
{
    Random random;
    for (int round = 0; round < 2000 && !HasFatalFailure(); ++round) {
        Intervals intervals;
        Bitmap expected;
        for (std::size_t count = random.Below(12); count > 0; --count) {
            const auto start = static_cast<std::uint32_t>(random.Below(100));
            const auto end = static_cast<std::uint32_t>(start + random.Below(10));
            ASSERT_TRUE(numbers_.InsertIntervals(intervals, start, end));
            SetBits(expected, start, end);
        }
        Intervals plain = intervals;

        numbers_.MergeIntervals(intervals);

        plain_.MergeIntervals(plain);
        ASSERT_EQ(plain, intervals);
        ASSERT_EQ(expected, BitsOf(numbers_, intervals));
        const auto touches = [](const auto& a, const auto& b) { return b.first <= a.second + 1; };
        ASSERT_EQ(intervals.end(), std::adjacent_find(intervals.begin(), intervals.end(), touches));
    }
}

} // namespace
