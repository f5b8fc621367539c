#include "tool/simulation/times_file.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/temporary_tree.h"
#include "tool/text/failure.h"

namespace {

using tool::Milliseconds;
using tool::ReadMilliseconds;
using tool::TimesFile;

TEST(TimesFileTest, OnlyWholeMillisecondsAreTimes)
{
    EXPECT_EQ(ReadMilliseconds("0"), std::optional<Milliseconds>(0));
    EXPECT_EQ(ReadMilliseconds("007"), std::optional<Milliseconds>(7));
    EXPECT_EQ(ReadMilliseconds("4294967295"), std::optional<Milliseconds>(4294967295U));
    for (const char* text :
         {"", "4294967296", "99999999999999999999999", "-1", "+1", " 1", "1.5", "1s", "0x1"}) {
        EXPECT_FALSE(ReadMilliseconds(text)) << text;
    }
}

TEST(TimesFileTest, AnExactNameGoesBeforeThePatternsAndAnEarlierPatternBeforeALaterOne)
{
    const test_support::TemporaryTree tree;
    const TimesFile times = TimesFile::Read(
        tree.Write("times.yaml", "\"cam_<1-3>\": 1\n\"cam_<*>\": 2\ncam_2: 3\n\"cam_<7>\": 4\ncam: 5\n"));

    EXPECT_EQ(times.Find("cam_1"), std::optional<Milliseconds>(1));
    EXPECT_EQ(times.Find("cam_2"), std::optional<Milliseconds>(3));
    EXPECT_EQ(times.Find("cam_7"), std::optional<Milliseconds>(2));
    EXPECT_EQ(times.Find("cam_<7>"), std::optional<Milliseconds>(4));
    EXPECT_EQ(times.Find("camera"), std::nullopt); // no name stands for those that begin with it
}

TEST(TimesFileTest, WhatIsNoMappingToTimesIsRefusedWithItsPlace)
{
    const test_support::TemporaryTree tree;
    for (const char* content : {"", "- a\n", "a: [1]\n", "a: 1\na: 2\n", "a: x\n", "a: {\n"}) {
        EXPECT_THROW(TimesFile::Read(tree.Write("times.yaml", content)), tool::Failure) << content;
    }
    EXPECT_THROW(TimesFile::Read(tree.Path("none.yaml")), tool::Failure);
}

} // namespace
