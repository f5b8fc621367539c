// The pattern operations next to the plain ones of tests/support.

#include <cstddef>
#include <string>
#include <vector>

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
using SplitedStr = ParseAndDepend::SplitedStr;

class NamePatternsExhaustiveTest : public ::testing::Test {
protected:
    void ExpectSameMatch(const std::string& pattern, const std::string& name)
    {
        ASSERT_EQ(plain_.IsDynamicParaMatch(pattern, name), patterns_.IsDynamicParaMatch(pattern, name))
            << pattern << " against " << name;
        ExpectSameLog(pattern, name);
    }

    void ExpectSameSplit(SplitedStr split, const std::string& name)
    {
        SplitedStr plain = split;
        ASSERT_EQ(plain_.SplitPara(name, plain), patterns_.SplitPara(name, split)) << name;
        ASSERT_EQ(plain.patternStrs, split.patternStrs) << name;
        ASSERT_EQ(plain.paraStrs, split.paraStrs) << name;
    }

    void ExpectSameLog(const std::string& pattern, const std::string& name)
    {
        const Lines lines = log_.Take();
        ASSERT_EQ(plainLines_, lines) << pattern << " against " << name;
        plainLines_.clear();
    }

    const ParseAndDepend patterns_{};
    Lines plainLines_;
    PlainPatterns plain_{plainLines_};
    LogCapture log_;
};

TEST_F(NamePatternsExhaustiveTest, EveryShortPatternMatchesEveryShortNameAsThePlainOne)
{
    const std::vector<std::string> names = EveryText("a1<", 3);
    for (const std::string& pattern : EveryText("a<>*1-,", 5)) {
        for (const std::string& name : names) {
            ExpectSameMatch(pattern, name);
        }
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(NamePatternsExhaustiveTest, EveryShortPatternIsSplitAsThePlainOne)
{
    const std::vector<std::string> names = EveryText("a1", 2);
    for (const std::string& pattern : EveryText("a<>*1", 5)) {
        SplitedStr plain;
        SplitedStr split;
        plain_.SplitPattern(pattern, plain);
        patterns_.SplitPattern(pattern, split);
        ASSERT_EQ(plain.patternTypes, split.patternTypes) << pattern;
        ASSERT_EQ(plain.patternStrs, split.patternStrs) << pattern;
        ASSERT_EQ(plain_.IsDynamicPara(pattern), patterns_.IsDynamicPara(pattern)) << pattern;
        for (const std::string& name : names) {
            ExpectSameSplit(split, name);
        }
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(NamePatternsExhaustiveTest, RandomPatternsMatchRandomNamesAsThePlainOnes)
{
    const std::vector<std::string> pieces = {
        "app",     "_",        "a",   "1",     ".", "..", "<*PATH>", "<*>", "<1-3>",       "<0>",
        "<2,,5->", "<12-,-3>", "<x>", "<3-1>", "<", ">",  "<>",      "-",   "<4294967296>"};
    const std::vector<std::string> nameParts = {"app", "_",  "a", "1", ".",         "..",
                                                "5",   "12", "x", "<", "4294967295"};
    Random random;
    for (int round = 0; round < 40000 && !HasFatalFailure(); ++round) {
        std::string pattern;
        std::string name;
        for (std::size_t count = 1 + random.Below(6); count > 0; --count) {
            pattern += pieces[random.Below(pieces.size())];
        }
        for (std::size_t count = 1 + random.Below(6); count > 0; --count) {
            name += nameParts[random.Below(nameParts.size())];
        }
        ExpectSameMatch(pattern, name);
    }
}

// A name made from its pattern gets further than one at random.
TEST_F(NamePatternsExhaustiveTest, NamesMadeForTheirPatternsMatchAsThePlainOnes)
{
    Random random;
    for (int round = 0; round < 20000 && !HasFatalFailure(); ++round) {
        std::string pattern;
        std::string name;
        for (std::size_t count = 1 + random.Below(5); count > 0; --count) {
            const std::string literal = random.Text("ab_", 2);
            const std::string number = std::to_string(random.Below(12));
            pattern += literal + (random.OneIn(3)   ? "<*>"
                                  : random.OneIn(3) ? "<*PATH>"
                                                    : "<2-4,7-" + number + ">");
            name += literal + (random.OneIn(4) ? random.Text("ab.", 3) : number);
        }
        ExpectSameMatch(pattern, name);
    }
}

TEST_F(NamePatternsExhaustiveTest, LengthsAroundTheLimitsMatchAsThePlainOnes)
{
    for (const std::size_t patternLength : {0U, 1U, 3U, 1023U, 1024U, 1025U}) {
        for (const std::size_t nameLength : {0U, 1U, 2U, 1023U, 1024U, 1025U, 3000U}) {
            std::string pattern(patternLength, 'a');
            ExpectSameMatch(pattern, std::string(nameLength, 'a'));
            if (patternLength >= 3) {
                pattern.replace(patternLength - 3, 3, "<*>");
                ExpectSameMatch(pattern, std::string(nameLength, 'a'));
            }
        }
    }
}

// Pieces as no pattern gives them: empty literals, and literals side by side.
TEST_F(NamePatternsExhaustiveTest, AnyListOfPiecesSplitsANameAsThePlainOne)
{
    Random random;
    for (int round = 0; round < 20000 && !HasFatalFailure(); ++round) {
        SplitedStr split;
        for (std::size_t count = random.Below(5); count > 0; --count) {
            split.patternTypes.push_back(static_cast<ParseAndDepend::PatternType>(random.Below(4)));
            split.patternStrs.push_back(random.Text("ab", 2));
        }
        split.paraStrs.assign(random.Below(6), "before");
        ExpectSameSplit(split, random.Text("ab", 6));
    }
    EXPECT_EQ(Lines(), log_.Take());
}

} // namespace
