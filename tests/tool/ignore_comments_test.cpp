#include "tool/source/ignore_comments.h"

#include <chrono>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_tree.h"

namespace {

using test_support::TemporaryTree;

// Each comment as "LINE:COLUMN RULE for LINE".
std::vector<std::string> CommentsIn(const std::string& text)
{
    const TemporaryTree tree;
    const tool::SourceFile file = tool::SourceFile::Read(tree.Write("file.yaml", text));
    std::vector<std::string> comments;
    for (const tool::IgnoreComment& one : tool::ReadIgnoreComments(file)) {
        comments.push_back(
            fmt::format("{}:{} {} for {}", one.mark.line, one.mark.column, one.rule, one.line));
    }
    return comments;
}

using Comments = std::vector<std::string>;

TEST(IgnoreCommentsTest, ACommentBehindTextIsAboutItsOwnLine)
{
    EXPECT_EQ(Comments({"1:28 a for 1"}), CommentsIn("key: 1 # startplan: ignore[a]\n"));
    EXPECT_EQ(Comments({"1:26 a for 1"}), CommentsIn("key: 1 #startplan:ignore[a]"));
}

TEST(IgnoreCommentsTest, ACommentWithALineOfItsOwnIsAboutTheNextOneThatIsMore)
{
    EXPECT_EQ(Comments({"1:21 a for 5", "3:23 b for 5"}), CommentsIn("# startplan: ignore[a]\n"
                                                                     "\n"
                                                                     "  # startplan: ignore[b]\n"
                                                                     "# Words.\n"
                                                                     "key: 1\n"));
    EXPECT_EQ(Comments({"2:21 a for 3"}), CommentsIn("key: 1\n# startplan: ignore[a]\n"));
}

TEST(IgnoreCommentsTest, AListNamesSeveralRules)
{
    EXPECT_EQ(Comments({"1:29 a for 1", "1:32 b-c for 1", "1:37 d for 1"}),
              CommentsIn("key: 1 # startplan: ignore[ a, b-c  d ] since it is so\n"));
    EXPECT_EQ(Comments(), CommentsIn("key: 1 # startplan: ignore[]\n"));
}

TEST(IgnoreCommentsTest, WhatIsNotUnderstoodIsKept)
{
    EXPECT_EQ(Comments({"1:8  for 1"}), CommentsIn("key: 1 # startplan: ignore(a)\n"));
    EXPECT_EQ(Comments({"1:8  for 1"}), CommentsIn("key: 1 # startplan: ignore[a\n"));
    EXPECT_EQ(Comments(), CommentsIn("key: 1 # see startplan: ignore[a]\n"));
}

TEST(IgnoreCommentsTest, TextIsNoComment)
{
    EXPECT_EQ(Comments({"12:26 z for 12"}), CommentsIn("a: \"# startplan: ignore[a]\"\n"
                                                       "b: '''# startplan: ignore[a]'\n"
                                                       "c: |\n"
                                                       "  # startplan: ignore[a]\n"
                                                       "d: >-\n"
                                                       "\n"
                                                       "  # startplan: ignore[a]\n"
                                                       "e: plain#startplan:ignore[a]\n"
                                                       "f: \"two\n"
                                                       "  # startplan: ignore[a]\n"
                                                       "  lines\"\n"
                                                       "é: 1 # startplan: ignore[z]\n"));
}

TEST(IgnoreCommentsTest, BlockScalarsMayHaveACommentBesideTheirSign)
{
    EXPECT_EQ(Comments({"1:26 a for 1", "3:21 b for 4"}), CommentsIn("a: | # startplan: ignore[a]\n"
                                                                     "  # startplan: ignore[x]\n"
                                                                     "# startplan: ignore[b]\n"
                                                                     "b: 1\n"));
}

TEST(IgnoreCommentsTest, ColumnsCountCharacters)
{
    EXPECT_EQ(Comments({"2:28 a for 2"}), CommentsIn("\xEF\xBB\xBF\"äöü€\": \"#\"\n"
                                                     "ä: \"€\" # startplan: ignore[a]\r\n"));
}

TEST(IgnoreCommentsTest, BehindAMistakeNothingIsRead)
{
    EXPECT_EQ(Comments({"1:21 a for 2"}), CommentsIn("# startplan: ignore[a]\n"
                                                     "key: \"open\n"
                                                     "# startplan: ignore[b]\n"));
}

TEST(IgnoreCommentsTest, ManyCommentsTakeTimeInProportion)
{
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += "# startplan: ignore[a]\n";
    }
    const auto before = std::chrono::steady_clock::now();

    EXPECT_EQ(100'000U, CommentsIn(text + "key: 1\n").size());

    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(20));
}

} // namespace
