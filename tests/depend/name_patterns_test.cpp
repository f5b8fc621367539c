#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <syslog.h>

#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using SplitedStr = ParseAndDepend::SplitedStr;
using Types = std::vector<ParseAndDepend::PatternType>;
using Strings = std::vector<std::string>;

static_assert(std::is_same_v<std::underlying_type_t<ParseAndDepend::PatternType>, std::uint32_t>);
static_assert(ParseAndDepend::PATTERN_CONST == 0 && ParseAndDepend::PATTERN_NUM == 1);
static_assert(ParseAndDepend::PATTERN_PATH == 2 && ParseAndDepend::PATTERN_ANY == 3);
static_assert(std::is_same_v<decltype(SplitedStr::patternTypes), Types>);
static_assert(std::is_same_v<decltype(SplitedStr::patternStrs), Strings>);
static_assert(std::is_same_v<decltype(SplitedStr::paraStrs), Strings>);
static_assert(std::is_same_v<decltype(&ParseAndDepend::IsDynamicParaMatch),
                             bool (ParseAndDepend::*)(const std::string&, const std::string&) const>);
static_assert(std::is_same_v<decltype(&ParseAndDepend::SplitPara),
                             bool (ParseAndDepend::*)(const std::string&, SplitedStr&) const>);

class NamePatternsTest : public ::testing::Test {
protected:
    static Lines LengthLine(const std::string& pattern, const std::string& name)
    {
        return {{LOG_ERR,
                 "ParseAndDepend IsDynamicParaMatch: dynamic para invalid, pattern=" +
                     std::to_string(pattern.size()) + ", str=" + std::to_string(name.size()),
                 {}}};
    }

    SplitedStr Split(const std::string& pattern, const std::string& name)
    {
        SplitedStr split;
        patterns_.SplitPattern(pattern, split);
        isSplit_ = patterns_.SplitPara(name, split);
        return split;
    }

    const ParseAndDepend patterns_{};
    bool isSplit_ = false;
    LogCapture log_;
};

struct MatchCase {
    const char* pattern;
    const char* name;
    bool matches;
};

const MatchCase kMatchCases[] = {
    {"app_<1-3,5>", "app_1", true},
    {"app_<1-3,5>", "app_3", true},
    {"app_<1-3,5>", "app_5", true},
    {"app_<1-3,5>", "app_05", true}, // leading zeros are only digits
    {"app_<1-3,5>", "app_4", false},
    {"app_<1-3,5>", "app_", false}, // an empty piece reads as 0, and 0 is not listed
    {"app_<0-3>", "app_", true},
    {"app_<>", "app_0", true},
    {"app_<>", "app_", true},
    {"app_<>", "app_4294967295", true},
    {"app_<5->", "app_4", false},
    {"app_<5->", "app_5", true},
    {"app_<5->", "app_4294967295", true},
    {"app_<-2>", "app_0", true},
    {"app_<-2>", "app_2", true},
    {"app_<-2>", "app_3", false},
    {"app_<1,,3>", "app_0", true}, // the empty item is 0
    {"app_<1,,3>", "app_2", false},
    {"/opt/<*PATH>", "/opt/a/b", true},
    {"/opt/<*PATH>", "/opt/a/../b", false},
    {"/opt/<*PATH>", "/opt/..", false},
    {"/opt/<*PATH>", "/opt/a...b", false},
    {"/opt/<*PATH>", "/opt/.a.", true},
    {"/opt/<*PATH>", "/opt/", true},
    {"svc_<*>_x", "svc_abc_x", true},
    {"svc_<*>_x", "svc__x", true},
    {"svc_<*>_x", "svc_abc_xyz", true}, // text behind a last literal is not looked at
    {"svc_<*>_x", "svc_abc", false},
    {"svc_<*>_x", "xsvc_a_x", false},
    {"svc_<*>_x<1>", "svc_a_x1", true},
    {"svc_<*>_x<1>", "svc_a_x2", false},
    {"svc_<*>_x<2>", "svc_a_x2", true},
    {"<*>_a_<1>", "x_a_1", true},
    {"<*>_a_<1>", "_a_1", true},
    {"<0>b", "b", true},
    {"<1>b", "1b", true},
    {"<1>b", "1bc", true},
    {"<1><2>", "2", false}, // the first of two neighbours gets the empty text, 0
    {"<0><2>", "2", true},
    {"<*><*PATH>", "..", false},
    {"<*PATH><*>", "..", true},
    {"abc", "abc", true},
    {"abc", "abcdef", true},
    {"abc", "xabc", false},
    {"abc", "ab", false},
    {"a>b<1>", "a>b<1>", true}, // the first '>' in front of the first '<': all literal
    {"a>b<1>", "a>b1", false},
    {"a<1", "a<1", true},
    {"a<*>b>c<1>", "aXb>c<1>", true}, // likewise behind a dynamic piece
    {"a<*>b>c<1>", "aXb>c1", false},
    {"<<>", "a", false}, // the list is "<", which is no number
    {"a<*path>", "a1", false},
};

TEST_F(NamePatternsTest, NamesMatchTheirPatterns)
{
    for (const MatchCase& c : kMatchCases) {
        SCOPED_TRACE(std::string(c.pattern) + " against " + c.name);
        EXPECT_EQ(c.matches, patterns_.IsDynamicParaMatch(c.pattern, c.name));
    }
}

TEST_F(NamePatternsTest, AMatchAndAMissingLiteralLogNothing)
{
    EXPECT_TRUE(patterns_.IsDynamicParaMatch("app_<1-3>_<*>_<*PATH>", "app_2_x_y"));
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("app_<1-3>", "app_4"));
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("app_<1-3>", "ap"));
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("<*PATH>", ".."));
    // The list is bad, but the literal behind it is missing, so no piece is checked.
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("app_<x>_y", "app_1"));

    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NamePatternsTest, ANameThatIsNoNumberIsLogged)
{
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("app_<1-3,5>", "app_x"));
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("app_<>", "app_4294967296"));

    EXPECT_EQ(Lines({{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, x", {}},
                     {LOG_ERR, "ParseAndDepend StrToUint32: dynamic para out of range, 4294967296", {}}}),
              log_.Take());
}

TEST_F(NamePatternsTest, ABadListIsLoggedBehindTheNumberAtFaultAndTheNameNotRead)
{
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("app_<1-x>", "app_y"));
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("app_<3-1>", "app_y"));

    EXPECT_EQ(Lines({{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, x", {}},
                     {LOG_ERR, "ParseAndDepend CheckNumTypePara: GetIntervals fail, 1-x", {}},
                     {LOG_ERR, "ParseAndDepend CheckNumTypePara: GetIntervals fail, 3-1", {}}}),
              log_.Take());
}

TEST_F(NamePatternsTest, TheFirstPieceThatFailsEndsTheMatch)
{
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("<1>a<2>", "xay"));
    EXPECT_FALSE(patterns_.IsDynamicParaMatch("<*PATH>a<2>", "..ay"));

    EXPECT_EQ(Lines({{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, x", {}}}), log_.Take());
}

TEST_F(NamePatternsTest, LengthsOutside1To1024NeverMatchAndAreLogged)
{
    const std::string longest(1024, 'a');
    const std::string tooLong(1025, 'a');
    const std::string pairs[][2] = {{"", "a"},        {"a", ""},          {"", ""},          {tooLong, "a"},
                                    {"a", tooLong},   {tooLong, tooLong}, {"", tooLong},     {tooLong, ""},
                                    {"<*>", tooLong}, {longest, tooLong}, {tooLong, longest}};
    for (const auto& [pattern, name] : pairs) {
        EXPECT_FALSE(patterns_.IsDynamicParaMatch(pattern, name));
        EXPECT_EQ(LengthLine(pattern, name), log_.Take());
    }
}

TEST_F(NamePatternsTest, LengthsOf1And1024Match)
{
    const std::string longest(1024, 'a');

    EXPECT_TRUE(patterns_.IsDynamicParaMatch("a", "a"));
    EXPECT_TRUE(patterns_.IsDynamicParaMatch("a", longest));
    EXPECT_TRUE(patterns_.IsDynamicParaMatch("<*>", longest));
    EXPECT_TRUE(patterns_.IsDynamicParaMatch(longest, longest));
    EXPECT_FALSE(patterns_.IsDynamicParaMatch(longest, "a"));
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NamePatternsTest, APatternMayBeFullOfDynamicPieces)
{
    std::string empties;
    std::string anys;
    for (int i = 0; i < 512; ++i) {
        empties += "<>";
    }
    for (int i = 0; i < 341; ++i) {
        anys += "<*>";
    }

    EXPECT_TRUE(patterns_.IsDynamicParaMatch(empties, "7"));
    EXPECT_TRUE(patterns_.IsDynamicParaMatch(anys, "any"));
    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_FALSE(patterns_.IsDynamicParaMatch(empties, "x"));
    EXPECT_EQ(1U, log_.Take().size());
}

TEST_F(NamePatternsTest, ANameIsDynamicWithABracketPairInThisOrder)
{
    EXPECT_TRUE(patterns_.IsDynamicPara("a<1>"));
    EXPECT_TRUE(patterns_.IsDynamicPara("<>"));
    EXPECT_TRUE(patterns_.IsDynamicPara("<<>>"));
    EXPECT_TRUE(patterns_.IsDynamicPara("a<b>c>d<"));

    EXPECT_FALSE(patterns_.IsDynamicPara("a>b<1>"));
    EXPECT_FALSE(patterns_.IsDynamicPara("a<1"));
    EXPECT_FALSE(patterns_.IsDynamicPara("a1>"));
    EXPECT_FALSE(patterns_.IsDynamicPara("abc"));
    EXPECT_FALSE(patterns_.IsDynamicPara(""));
    EXPECT_TRUE(patterns_.IsDynamicPara(std::string(2000, 'a') + "<1>")); // no limit on the length here
    EXPECT_EQ(Lines(), log_.Take());
}

struct SplitCase {
    const char* pattern;
    Types types;
    Strings texts;
};

TEST_F(NamePatternsTest, APatternIsSplitIntoItsPieces)
{
    const auto text = ParseAndDepend::PATTERN_CONST;
    const auto number = ParseAndDepend::PATTERN_NUM;
    const auto path = ParseAndDepend::PATTERN_PATH;
    const auto any = ParseAndDepend::PATTERN_ANY;
    const SplitCase cases[] = {
        {"app_<1-3>", {text, number}, {"app_", "1-3"}},
        {"<*>_x<*PATH>", {any, text, path}, {"*", "_x", "*PATH"}},
        {"a<1>b", {text, number, text}, {"a", "1", "b"}},
        {"abc", {text}, {"abc"}},
        {"", {}, {}},
        {"<>", {number}, {""}},
        {"<**>", {number}, {"**"}},
        {"<*PATHS>", {number}, {"*PATHS"}},
        {"< *>", {number}, {" *"}},
        {"a<1>>b<2>", {text, number, text}, {"a", "1", ">b<2>"}},
        {"a<<1>", {text, number}, {"a", "<1"}},
        {"a<1><", {text, number, text}, {"a", "1", "<"}},
        {"a>b<1>", {text}, {"a>b<1>"}},
    };
    for (const SplitCase& c : cases) {
        SCOPED_TRACE(c.pattern);
        SplitedStr split;
        patterns_.SplitPattern(c.pattern, split);
        EXPECT_EQ(c.types, split.patternTypes);
        EXPECT_EQ(c.texts, split.patternStrs);
        EXPECT_EQ(Strings(), split.paraStrs);
    }
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NamePatternsTest, SplittingAPatternAppends)
{
    SplitedStr split;
    split.paraStrs = {"kept"};
    patterns_.SplitPattern("a<*>", split);
    patterns_.SplitPattern("b", split);

    EXPECT_EQ(
        Types({ParseAndDepend::PATTERN_CONST, ParseAndDepend::PATTERN_ANY, ParseAndDepend::PATTERN_CONST}),
        split.patternTypes);
    EXPECT_EQ(Strings({"a", "*", "b"}), split.patternStrs);
    EXPECT_EQ(Strings({"kept"}), split.paraStrs);
}

TEST_F(NamePatternsTest, EachPieceGetsItsPartOfTheName)
{
    EXPECT_EQ(Strings({"svc_", "abc", "_x"}), Split("svc_<*>_x", "svc_abc_x").paraStrs);
    EXPECT_TRUE(isSplit_);
    EXPECT_EQ(Strings({"svc_", "", "_x"}), Split("svc_<*>_x", "svc__x").paraStrs);
    EXPECT_TRUE(isSplit_);
    EXPECT_EQ(Strings({"svc_", "abc", "yz"}), Split("svc_<*>_x", "svc_abc_xyz").paraStrs);
    EXPECT_TRUE(isSplit_); // what is left over replaces the last literal's own text
    EXPECT_EQ(Strings({"def"}), Split("abc", "abcdef").paraStrs);
    EXPECT_TRUE(isSplit_);
    EXPECT_EQ(Strings({"", "12"}), Split("<1><2>", "12").paraStrs);
    EXPECT_TRUE(isSplit_);
    EXPECT_EQ(Strings({"", "12", "a", "x"}), Split("<1><2>a<*>", "12ax").paraStrs);
    EXPECT_TRUE(isSplit_);
    EXPECT_EQ(Strings({""}), Split("<*>", "").paraStrs);
    EXPECT_TRUE(isSplit_);
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NamePatternsTest, ANameWithoutALiteralIsNotSplitToTheEnd)
{
    EXPECT_EQ(Strings({"svc_", "", ""}), Split("svc_<*>_x", "svc_abc").paraStrs);
    EXPECT_FALSE(isSplit_);
    EXPECT_EQ(Strings({"", "", ""}), Split("svc_<*>_x", "xsvc_a_x").paraStrs);
    EXPECT_FALSE(isSplit_);
    EXPECT_EQ(Strings({"1", "a", "", ""}), Split("<*>a<*>b", "1a2").paraStrs);
    EXPECT_FALSE(isSplit_);
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(NamePatternsTest, WithoutPiecesTextIsStoredNowhere)
{
    SplitedStr split;

    EXPECT_TRUE(patterns_.SplitPara("text", split));

    EXPECT_EQ(Strings(), split.paraStrs);
}

TEST_F(NamePatternsTest, SplittingANameFitsTheListOfPartsToThePieces)
{
    SplitedStr split;
    patterns_.SplitPattern("a<*>", split);
    split.paraStrs = {"1", "2", "3"};

    EXPECT_TRUE(patterns_.SplitPara("a", split));

    EXPECT_EQ(Strings({"a", "2"}), split.paraStrs); // no text for "*", which keeps what it had
}

TEST_F(NamePatternsTest, ThePathAndAnyChecksLookAtTheNameOnly)
{
    EXPECT_TRUE(patterns_.CheckPathTypePara("..", "a.b."));
    EXPECT_TRUE(patterns_.CheckPathTypePara("", ""));
    EXPECT_FALSE(patterns_.CheckPathTypePara("", "a..b"));
    EXPECT_TRUE(patterns_.CheckAnyTypePara("", "a..b"));
    EXPECT_TRUE(patterns_.CheckAnyTypePara("1", ""));
    EXPECT_EQ(Lines(), log_.Take());
}

} // namespace
