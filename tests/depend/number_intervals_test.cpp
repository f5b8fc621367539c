#include <cstdint>
#include <map>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>
#include <syslog.h>

#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using Intervals = std::map<std::uint32_t, std::uint32_t>;

constexpr std::uint32_t kTop = 4294967295;

static_assert(std::is_same_v<decltype(&ParseAndDepend::GetIntervals),
                             bool (ParseAndDepend::*)(std::string, Intervals&) const>);
static_assert(std::is_same_v<decltype(&ParseAndDepend::StrToUint32),
                             bool (ParseAndDepend::*)(const std::string&, std::uint32_t&) const>);

class NumberIntervalsTest : public ::testing::Test {
protected:
    static Lines Invalid(const std::string& text)
    {
        return {{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, " + text, {}}};
    }
    static Lines OutOfRange(const std::string& text)
    {
        return {{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para out of range, " + text, {}}};
    }
    static Lines BadList(const std::string& list)
    {
        return {{LOG_ERR, "ParseAndDepend CheckNumTypePara: GetIntervals fail, " + list, {}}};
    }
    static Lines Both(Lines first, const Lines& second)
    {
        first.insert(first.end(), second.begin(), second.end());
        return first;
    }

    Intervals Merged(Intervals intervals) const
    {
        numbers_.MergeIntervals(intervals);
        return intervals;
    }

    const ParseAndDepend numbers_{};
    LogCapture log_;
};

struct NumberCase {
    const char* text;
    std::uint32_t value;
};

TEST_F(NumberIntervalsTest, DecimalTextsAreNumbers)
{
    const NumberCase cases[] = {{"", 0},
                                {"0", 0},
                                {"7", 7},
                                {"007", 7},
                                {"4294967294", kTop - 1},
                                {"4294967295", kTop},
                                {"00000000000000000000004294967295", kTop}};
    for (const NumberCase& c : cases) {
        SCOPED_TRACE(c.text);
        std::uint32_t number = 99;
        EXPECT_TRUE(numbers_.StrToUint32(c.text, number));
        EXPECT_EQ(c.value, number);
    }
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NumberIntervalsTest, AnythingButDigitsIsInvalidAndLeavesTheNumberAlone)
{
    for (const std::string text :
         {"+1", " 1", "-1", "1 ", "1x", "x1", "0x1", "1.0", "a", "/", ":", "1-", "\xb2"}) {
        SCOPED_TRACE(text);
        std::uint32_t number = 99;
        EXPECT_FALSE(numbers_.StrToUint32(text, number));
        EXPECT_EQ(99U, number);
        EXPECT_EQ(Invalid(text), log_.Take());
    }
}

TEST_F(NumberIntervalsTest, AValueAboveTheTopIsOutOfRangeAndLeavesTheNumberAlone)
{
    for (const std::string text :
         {"4294967296", "42949672950", "18446744073709551616", "99999999999999999999999"}) {
        SCOPED_TRACE(text);
        std::uint32_t number = 99;
        EXPECT_FALSE(numbers_.StrToUint32(text, number));
        EXPECT_EQ(99U, number);
        EXPECT_EQ(OutOfRange(text), log_.Take());
    }
}

TEST_F(NumberIntervalsTest, TheFirstFaultFromTheLeftDecides)
{
    std::uint32_t number = 99;

    EXPECT_FALSE(numbers_.StrToUint32("4294967296x", number));
    EXPECT_EQ(OutOfRange("4294967296x"), log_.Take());
    EXPECT_FALSE(numbers_.StrToUint32("429496729x6", number));
    EXPECT_EQ(Invalid("429496729x6"), log_.Take());
}

struct ListCase {
    const char* text;
    Intervals intervals;
};

TEST_F(NumberIntervalsTest, ListsAreReadAndMerged)
{
    const ListCase cases[] = {
        {"1-3,5", {{1, 3}, {5, 5}}},
        {"1-3,4-6,10", {{1, 6}, {10, 10}}},
        {"10,4-6,1-3", {{1, 6}, {10, 10}}},
        {"0-4294967295,7-9", {{0, kTop}, {7, 9}}}, // the end wraps, so it takes in nothing
        {"", {{0, kTop}}},
        {"-", {{0, kTop}}},
        {"5-", {{5, kTop}}},
        {"-2", {{0, 2}}},
        {"1,,3", {{0, 1}, {3, 3}}}, // the empty item is 0
        {"7,", {{7, 7}}},           // a comma at the end is followed by no item
        {",", {{0, 0}}},
        {",7", {{0, 0}, {7, 7}}},
        {"007-0010", {{7, 10}}},
        {"1-5,1-3", {{1, 5}}},
        {"1-3,1-5", {{1, 5}}},
        {"4-4", {{4, 4}}},
        {"3,3,3", {{3, 3}}},
        {"4294967295", {{kTop, kTop}}},
        {"4294967294,4294967295", {{kTop - 1, kTop}}},
    };
    for (const ListCase& c : cases) {
        SCOPED_TRACE(c.text);
        Intervals intervals;
        EXPECT_TRUE(numbers_.GetIntervals(c.text, intervals));
        EXPECT_EQ(c.intervals, intervals);
    }
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NumberIntervalsTest, ABadItemEndsTheListAndKeepsTheIntervalsBeforeItUnmerged)
{
    Intervals intervals;

    EXPECT_FALSE(numbers_.GetIntervals("4-6,1-3,5-3,9", intervals));

    EXPECT_EQ(Intervals({{1, 3}, {4, 6}}), intervals);
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NumberIntervalsTest, ABadNumberInAListIsLoggedAndNoFurtherOneIsRead)
{
    const struct {
        const char* list;
        Lines lines;
    } cases[] = {
        {"1-2-3", Invalid("2-3")},
        {"x-y", Invalid("x")},
        {"1-y,z", Invalid("y")},
        {"--1", Invalid("-1")},
        {"-1-2", Invalid("1-2")},
        {"4294967296", OutOfRange("4294967296")},
        {"0-4294967296", OutOfRange("4294967296")},
        {"5-3", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.list);
        Intervals intervals;
        EXPECT_FALSE(numbers_.GetIntervals(c.list, intervals));
        EXPECT_EQ(Intervals(), intervals);
        EXPECT_EQ(c.lines, log_.Take());
    }
}

TEST_F(NumberIntervalsTest, AListIsAddedToWhatTheMapHolds)
{
    Intervals intervals = {{2, 3}, {8, 9}};
    EXPECT_TRUE(numbers_.GetIntervals("4-5", intervals));
    EXPECT_EQ(Intervals({{2, 5}, {8, 9}}), intervals);

    // The empty list sets the entry for 0 and merges nothing.
    intervals = {{0, 1}, {2, 3}, {4, 5}};
    EXPECT_TRUE(numbers_.GetIntervals("", intervals));
    EXPECT_EQ(Intervals({{0, kTop}, {2, 3}, {4, 5}}), intervals);
}

TEST_F(NumberIntervalsTest, OfTwoIntervalsWithTheSameStartTheLongerStays)
{
    Intervals intervals;

    EXPECT_TRUE(numbers_.InsertIntervals(intervals, 3, 5));
    EXPECT_TRUE(numbers_.InsertIntervals(intervals, 3, 4));
    EXPECT_EQ(Intervals({{3, 5}}), intervals);
    EXPECT_TRUE(numbers_.InsertIntervals(intervals, 3, 9));
    EXPECT_EQ(Intervals({{3, 9}}), intervals);
    EXPECT_TRUE(numbers_.InsertIntervals(intervals, 4, 6)); // overlaps are left to the merge
    EXPECT_EQ(Intervals({{3, 9}, {4, 6}}), intervals);
    EXPECT_FALSE(numbers_.InsertIntervals(intervals, 3, 2));
    EXPECT_FALSE(numbers_.InsertIntervals(intervals, kTop, 0));
    EXPECT_EQ(Intervals({{3, 9}, {4, 6}}), intervals);
    EXPECT_TRUE(numbers_.InsertIntervals(intervals, kTop, kTop));
    EXPECT_EQ(1U, intervals.count(kTop));
}

TEST_F(NumberIntervalsTest, IntervalsThatOverlapOrTouchAreMerged)
{
    EXPECT_EQ(Intervals(), Merged({}));
    EXPECT_EQ(Intervals({{5, 7}}), Merged({{5, 7}}));
    EXPECT_EQ(Intervals({{1, 6}}), Merged({{1, 3}, {4, 6}}));
    EXPECT_EQ(Intervals({{1, 3}, {5, 6}}), Merged({{1, 3}, {5, 6}}));
    EXPECT_EQ(Intervals({{1, 9}}), Merged({{1, 9}, {2, 3}, {4, 5}, {9, 9}}));
    EXPECT_EQ(Intervals({{1, 4}, {6, 9}}), Merged({{1, 2}, {3, 3}, {4, 4}, {6, 7}, {8, 9}}));
}

TEST_F(NumberIntervalsTest, AnIntervalThatReachesTheTopAbsorbsNothing)
{
    EXPECT_EQ(Intervals({{5, kTop}, {7, 9}, {11, 12}}), Merged({{5, kTop}, {7, 9}, {11, 12}}));
    EXPECT_EQ(Intervals({{1, kTop}, {7, 10}}), Merged({{1, 3}, {2, kTop}, {7, 9}, {10, 10}}));
    EXPECT_EQ(Intervals({{1, kTop}}), Merged({{1, kTop - 1}, {kTop, kTop}}));
}

TEST_F(NumberIntervalsTest, ANumberIsInRangeFromStartToEnd)
{
    const Intervals intervals = {{3, 5}, {7, 7}, {kTop, kTop}};

    for (const std::uint32_t inside : {3U, 4U, 5U, 7U, kTop}) {
        EXPECT_TRUE(numbers_.IsNumInRange(intervals, inside)) << inside;
    }
    for (const std::uint32_t outside : {0U, 2U, 6U, 8U, kTop - 1}) {
        EXPECT_FALSE(numbers_.IsNumInRange(intervals, outside)) << outside;
    }
    EXPECT_FALSE(numbers_.IsNumInRange({}, 0));
    EXPECT_TRUE(numbers_.IsNumInRange({{1, 9}, {2, 3}}, 7)); // unmerged ones may overlap
}

TEST_F(NumberIntervalsTest, ANamePieceIsCheckedAgainstItsList)
{
    EXPECT_TRUE(numbers_.CheckNumTypePara("1-3,5", "005"));
    EXPECT_TRUE(numbers_.CheckNumTypePara("0", ""));
    EXPECT_FALSE(numbers_.CheckNumTypePara("1-3,5", ""));
    EXPECT_FALSE(numbers_.CheckNumTypePara("1-3,5", "4"));
    EXPECT_TRUE(numbers_.CheckNumTypePara("", "4294967295"));
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NumberIntervalsTest, ABadNamePieceIsLoggedOnlyBehindAGoodList)
{
    EXPECT_FALSE(numbers_.CheckNumTypePara("1-3", "x"));
    EXPECT_EQ(Invalid("x"), log_.Take());
    EXPECT_FALSE(numbers_.CheckNumTypePara("", "4294967296"));
    EXPECT_EQ(OutOfRange("4294967296"), log_.Take());
    EXPECT_FALSE(numbers_.CheckNumTypePara("1,y,z", "x"));
    EXPECT_EQ(Both(Invalid("y"), BadList("1,y,z")), log_.Take());
    EXPECT_FALSE(numbers_.CheckNumTypePara("1,4294967296", "1"));
    EXPECT_EQ(Both(OutOfRange("4294967296"), BadList("1,4294967296")), log_.Take());
    EXPECT_FALSE(numbers_.CheckNumTypePara("1,5-3", "1"));
    EXPECT_EQ(BadList("1,5-3"), log_.Take());
}

} // namespace
