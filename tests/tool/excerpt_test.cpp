#include "tool/findings/excerpt.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using tool::Excerpt;
using tool::MakeExcerpt;
using tool::WrapWords;

// The line and the mark below it.
std::string Shown(const Excerpt& excerpt)
{
    return excerpt.line + "\n" + std::string(excerpt.indent, ' ') + excerpt.mark;
}

TEST(ExcerptTest, TheMarkStandsBelowItsPlace)
{
    EXPECT_EQ("key: value\n     ^~~~~", Shown(MakeExcerpt("key: value", 6, 5, 0)));
    EXPECT_EQ("key: value\n     ^", Shown(MakeExcerpt("key: value", 6, 0, 0)));
    EXPECT_EQ("äö: ü\n    ^", Shown(MakeExcerpt("äö: ü", 5, 1, 0)));
}

TEST(ExcerptTest, WhatIsMadeVisibleTakesItsPlace)
{
    EXPECT_EQ("\\x09a\\x09b: 1\n    ^~~~~~", Shown(MakeExcerpt("\ta\tb: 1", 2, 3, 0)));
}

TEST(ExcerptTest, AMarkBeyondTheLineStandsAtItsEnd)
{
    EXPECT_EQ("ab\n  ^", Shown(MakeExcerpt("ab", 9, 4, 0)));
    EXPECT_EQ("ab\n^", Shown(MakeExcerpt("ab", 0, 0, 0)));
}

TEST(ExcerptTest, ALongLineIsCutSoThatTheMarkIsSeen)
{
    EXPECT_EQ("01234\n^", Shown(MakeExcerpt("0123456789", 1, 1, 5)));
    EXPECT_EQ("34567\n   ^~", Shown(MakeExcerpt("0123456789", 7, 2, 5)));
    EXPECT_EQ("23456\n^~~~~", Shown(MakeExcerpt("0123456789", 3, 8, 5)));
}

TEST(ExcerptTest, WordsAreWrappedAtSpaces)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(Lines({"one two", "three"}), WrapWords("one two three", 9));
    EXPECT_EQ(Lines({"one two three"}), WrapWords("one two three", 0));
    EXPECT_EQ(Lines({"a", "longword", "b"}), WrapWords("a longword b", 4));
    EXPECT_EQ(Lines({""}), WrapWords("", 4));
}

} // namespace
