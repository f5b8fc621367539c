#include "tool/text/suggest.h"

#include <gtest/gtest.h>

namespace {

TEST(SuggestTest, CountsInsertionsRemovalsChangesAndSwaps)
{
    EXPECT_EQ(0U, tool::EditDistance("net", "NET", 3));
    EXPECT_EQ(1U, tool::EditDistance("net", "nte", 3));
    EXPECT_EQ(1U, tool::EditDistance("net", "nets", 3));
    EXPECT_EQ(1U, tool::EditDistance("net", "nt", 3));
    EXPECT_EQ(2U, tool::EditDistance("net", "bat", 3));
    EXPECT_EQ(3U, tool::EditDistance("", "net", 3));
    EXPECT_EQ(2U, tool::EditDistance("kitten", "sitting", 1)); // 3, which is beyond the limit
}

TEST(SuggestTest, SuggestsTheNearestAndNothingFarAway)
{
    EXPECT_EQ("restart", tool::Nearest("restrat", {"depends", "restart", "start"}));
    EXPECT_EQ("web", tool::Nearest("Web", {"wet", "web"}));
    EXPECT_EQ("", tool::Nearest("zebra", {"net", "web"}));
    EXPECT_EQ("", tool::Nearest("x", {""}));
    EXPECT_EQ(", did you mean \"net\"?", tool::DidYouMean("nett", {"web", "net"}));
    EXPECT_EQ("", tool::DidYouMean("zebra", {"web"}));
}

} // namespace
