#include "tool/manual/roff_text.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

TEST(RoffTextTest, LiteralTextShowsItsOwnCharacters)
{
    EXPECT_EQ(tool::RoffLiteral(R"(--a_b 'c\d' `e^~)"), R"(\-\-a_b \(aqc\ed\(aq \(gae\(ha\(ti)");
}

TEST(RoffTextTest, ALineOfProseNeverBeginsARequest)
{
    EXPECT_EQ(tool::RoffProse(".. is refused", {}), Lines{"\\&.. is refused"});
    EXPECT_EQ(tool::RoffProse("'tis", {}), Lines{"\\&'tis"});
}

TEST(RoffTextTest, EachSentenceBeginsALine)
{
    EXPECT_EQ(tool::RoffProse("One (or two.) Three\nfour. Is it? Yes", {}),
              (Lines{"One (or two.)", "Three four.", "Is it?", "Yes"}));
    EXPECT_EQ(tool::RoffProse("a ... b .. c, d. e", {}), (Lines{"a ... b .. c, d.", "e"}));
}

TEST(RoffTextTest, LinesEndBeforeEightyColumns)
{
    const std::string word(39, 'x');

    EXPECT_EQ(tool::RoffProse(word + " " + word + " " + word, {}), (Lines{word + " " + word, word}));
}

TEST(RoffTextTest, CodeIsToldFromWords)
{
    struct {
        const char* text;
        const char* roff;
    } const kCases[] = {
        {"top-level", "top-level"},                               // a word
        {"--replace-data", R"(\fB\-\-replace\-data\fR)"},         // an option
        {"(-r)", R"((\fB\-r\fR))"},                               //
        {"-1", R"(\-1)"},                                         // a number
        {"camera_<0-3>", R"(camera_<0\-3>)"},                     // a pattern
        {"`on-failure`,", R"(\fBon\-failure\fR,)"},               // code
        {"\"a-b c-d\" e-f", R"("a\-b c\-d" e-f)"},                // in quotes
        {"startplan-rules(7).", R"(\fBstartplan\-rules\fR(7).)"}, // a page
        {"a - b", "a \\- b"},                                     // a dash
        {"NAME", R"(\fINAME\fR)"},                                // what is put in
        {"NAMES", "NAMES"},                                       //
    };
    for (const auto& one : kCases) {
        SCOPED_TRACE(one.text);
        EXPECT_EQ(tool::RoffProse(one.text, {"NAME"}), Lines{one.roff});
    }
}

TEST(RoffTextTest, AUsageTellsWordsFromWhatIsPutIn)
{
    EXPECT_EQ(tool::RoffUsage("start|stop TOP [NAME]...|--all"),
              R"(\fBstart\fR|\fBstop\fR \fITOP\fR [\fINAME\fR]...|\fB\-\-all\fR)");
    EXPECT_EQ(tool::RoffVariables("[=WHEN] NAME=VALUE a"), (std::set<std::string>{"NAME", "VALUE", "WHEN"}));
}

} // namespace
