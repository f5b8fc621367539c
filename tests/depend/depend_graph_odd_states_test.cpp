// What a graph does with dependencies that are no vertices, and with a check that comes too late.

#include <set>
#include <string>

#include <gtest/gtest.h>
#include <syslog.h>

#include "startplan/depend_graph.h"
#include "tests/support/log_capture.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using Names = std::set<std::string>;

class DependGraphOddStatesTest : public ::testing::Test {
protected:
    // The next names handed out. A call may give none and only add a missing name, which the next one gives.
    Names NextNames()
    {
        const Names names = graph_.GetNoDependVertices();
        return names.empty() ? graph_.GetNoDependVertices() : names;
    }

    DependGraph graph_;
    LogCapture log_;
};

TEST_F(DependGraphOddStatesTest, AMissingNameIsHandedOutBeforeTheVertexThatWaitsForIt)
{
    graph_.Update({{"a", {"missing"}}});

    EXPECT_EQ(Names({"missing"}), NextNames());
    EXPECT_EQ(Names(), NextNames());
    EXPECT_TRUE(graph_.Pop("missing"));

    EXPECT_EQ(Names({"a"}), NextNames());
    EXPECT_TRUE(graph_.Pop("a"));
    EXPECT_EQ(Names(), NextNames());
}

TEST_F(DependGraphOddStatesTest, IsEmptyCountsPopsAgainstTheKeysOfUpdateOnly)
{
    graph_.Update({{"a", {"missing"}}, {"b", {}}});
    Names out = NextNames();
    if (out == Names({"b"})) { // or both at once, as the table's order has it
        out.merge(NextNames());
    }
    ASSERT_EQ(Names({"b", "missing"}), out);

    EXPECT_TRUE(graph_.Pop("b"));
    EXPECT_FALSE(graph_.IsEmpty());
    EXPECT_TRUE(graph_.Pop("missing"));

    EXPECT_TRUE(graph_.IsEmpty()); // two pops, two keys
    EXPECT_EQ(Names({"a"}), NextNames());
    EXPECT_TRUE(graph_.Pop("a"));
    EXPECT_FALSE(graph_.IsEmpty()); // three pops
}

TEST_F(DependGraphOddStatesTest, TheSecondCheckKnowsTheNamesThatTheFirstOneAdded)
{
    graph_.Update({{"a", {"missing"}}});

    const bool first = graph_.HasCycle(); // as the table's order has it
    EXPECT_EQ(first ? 1U : 0U, log_.Take().size());

    EXPECT_FALSE(graph_.HasCycle());
    EXPECT_EQ(Names({"missing"}), graph_.GetNoDependVertices());
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependGraphOddStatesTest, AMissingNameBehindAnUnfinishedDependencyIsNotAskedFor)
{
    graph_.Update({{"a", {"a", "missing"}}});

    EXPECT_TRUE(graph_.HasCycle());

    EXPECT_EQ(Lines({{LOG_ERR, "The Graph has cycle. the cycle is :a ", {}}}), log_.Take());
    EXPECT_EQ(Names(), NextNames());
    EXPECT_EQ(Names(), NextNames());
}

TEST_F(DependGraphOddStatesTest, AMissingNameInFrontOfAnUnfinishedDependencyIsAdded)
{
    graph_.Update({{"a", {"Missing", "a"}}});

    EXPECT_EQ(Names({"Missing"}), NextNames());
    EXPECT_TRUE(graph_.Pop("Missing"));
    EXPECT_EQ(Names(), NextNames());
}

TEST_F(DependGraphOddStatesTest, UpdateAndClearForgetTheNamesThatWereAdded)
{
    graph_.Update({{"a", {"missing"}}});
    graph_.HasCycle();

    graph_.Update({{"b", {}}});
    EXPECT_EQ(Names({"b"}), graph_.GetNoDependVertices());
    EXPECT_EQ(Names(), NextNames());

    graph_.Update({{"a", {"missing"}}});
    graph_.HasCycle();
    graph_.Clear();
    EXPECT_EQ(Names(), NextNames());
}

TEST_F(DependGraphOddStatesTest, ACheckAfterAHandOutLeavesTheVertexOut)
{
    graph_.Update({{"a", {}}, {"b", {"a"}}});
    graph_.GetNoDependVertices();

    EXPECT_FALSE(graph_.HasCycle());

    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.Pop("a"));
    EXPECT_EQ(Names({"b"}), graph_.GetNoDependVertices());
}

TEST_F(DependGraphOddStatesTest, ACheckAfterAPopMakesTheNameComeAgainWhileThePopStaysCounted)
{
    graph_.Update({{"a", {}}});
    graph_.GetNoDependVertices();
    graph_.Pop("a");
    EXPECT_TRUE(graph_.IsEmpty());

    EXPECT_FALSE(graph_.HasCycle());

    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Names({"a"}), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.Pop("a"));
    EXPECT_FALSE(graph_.IsEmpty()); // two pops, one key
}

TEST_F(DependGraphOddStatesTest, ANameQueuedTwiceAfterAPopCountsAsACycleWithoutMembers)
{
    graph_.Update({{"a", {}}, {"b", {"a"}}});
    graph_.GetNoDependVertices();
    graph_.Pop("a");
    log_.Take();

    // "b" is free at once, and once more when "a" is taken: three names for two vertices.
    EXPECT_TRUE(graph_.HasCycle());

    EXPECT_EQ(Lines({{LOG_ERR, "The Graph has cycle. the cycle is :", {}}}), log_.Take());
}

TEST_F(DependGraphOddStatesTest, ANameQueuedTwiceMayMakeUpForOneThatIsNeverQueued)
{
    graph_.Update({{"a", {}}, {"b", {"a"}}, {"self", {"self"}}});
    graph_.GetNoDependVertices();
    graph_.Pop("a");
    log_.Take();

    // "a", "b" and "b" again: three names for three vertices, although "self" is not among them.
    EXPECT_FALSE(graph_.HasCycle());

    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependGraphOddStatesTest, AVertexPoppedAfterTheCheckReleasesItsDependants)
{
    graph_.Update({{"a", {}}, {"b", {"a"}}, {"c", {"b"}}});
    graph_.GetNoDependVertices();
    graph_.Pop("a");
    graph_.GetNoDependVertices(); // "b" is out
    EXPECT_TRUE(graph_.HasCycle());

    EXPECT_TRUE(graph_.Pop("b"));

    EXPECT_EQ(Names({"a", "c"}), graph_.GetNoDependVertices());
}

} // namespace
