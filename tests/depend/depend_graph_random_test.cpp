// DependGraph next to the plain graph of tests/support: larger graphs, and calls in odd orders.

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "tests/depend/graph_comparison.h"
#include "tests/support/graph_driver.h"
#include "tests/support/plain_depend_graph.h"
#include "tests/support/random_seed.h"

namespace {

using test_support::GraphInput;
using test_support::HandOutAll;
using test_support::Lines;
using test_support::PlainDependGraph;
using test_support::Random;
using test_support::RandomGraph;
using test_support::Show;

class DependGraphRandomTest : public test_support::GraphComparisonTest {};

TEST_F(DependGraphRandomTest, RandomGraphsWithoutMissingNamesAgreeWithThePlainModel)
{
    Random random;
    for (int round = 0; round < 60 && !HasFatalFailure(); ++round) {
        const std::size_t vertices = 1 + random.Below(120);
        ExpectAgreement(RandomGraph(random, vertices, 1 + random.Below(4), random.OneIn(3), 0), true);
    }
}

// A table that was larger before keeps its room, so that no graph here needs more of it.
TEST_F(DependGraphRandomTest, RandomGraphsWithMissingNamesAndRoomForThemAgreeWithThePlainModel)
{
    Random random;
    Update(RandomGraph(random, 400, 0, false, 0));
    for (int round = 0; round < 60 && !HasFatalFailure(); ++round) {
        const GraphInput input = RandomGraph(random, 1 + random.Below(120), 1 + random.Below(4),
                                             random.OneIn(4), 1 + random.Below(20));
        Update(input);
        ASSERT_TRUE(plain_.HasRoomForMissing());
        ExpectAgreement(input, random.OneIn(2));
    }
}

// Where the table has to grow for missing names, its order is open, and with it the rounds. What comes out
// in the end is not: all that does not wait for a cycle, and the missing names that such vertices wait for.
TEST_F(DependGraphRandomTest, RandomGraphsThatGrowHandOutTheSameInTheEnd)
{
    Random random;
    for (int round = 0; round < 100; ++round) {
        const GraphInput input =
            RandomGraph(random, 1 + random.Below(80), 3, random.OneIn(3), 1 + random.Below(4));
        SCOPED_TRACE(Show(input));
        DependGraph graph; // new ones, with no room left from a larger graph
        Lines lines;
        PlainDependGraph plain(lines);
        graph.Update(input);
        plain.Update(input);

        EXPECT_EQ(HandOutAll(plain).handedOut, HandOutAll(graph).handedOut);

        EXPECT_EQ(plain.IsEmpty(), graph.IsEmpty());
        EXPECT_EQ(lines.size(), log_.Take().size());
    }
}

TEST_F(DependGraphRandomTest, RepeatedChecksOfGraphsThatGrowEndWithTheTrueVerdict)
{
    Random random;
    for (int round = 0; round < 100; ++round) {
        const GraphInput input =
            RandomGraph(random, 1 + random.Below(40), 3, random.OneIn(3), 1 + random.Below(4));
        SCOPED_TRACE(Show(input));
        DependGraph graph;
        Lines lines;
        PlainDependGraph plain(lines);
        graph.Update(input);
        plain.Update(input);

        // A check that adds no name any more knows all it needs; each one before added at least one.
        bool verdict = false;
        bool plainVerdict = false;
        for (std::size_t i = 0; i <= input.size() + 1; ++i) {
            verdict = graph.HasCycle();
            plainVerdict = plain.HasCycle();
        }

        EXPECT_EQ(plainVerdict, verdict);
    }
}

// Operations in any order: the check after hand-outs and pops, pops of anything, updates in between.
TEST_F(DependGraphRandomTest, RandomCallsInRandomOrderAgreeWithThePlainModel)
{
    Random random;
    for (int round = 0; round < 3000 && !HasFatalFailure(); ++round) {
        const GraphInput input =
            RandomGraph(random, 1 + random.Below(5), 2, random.OneIn(4), random.OneIn(2) ? 3 : 0);
        std::string calls = Show(input);
        Update(input);
        if (!plain_.HasRoomForMissing()) {
            continue; // libc++ starts with a table that fits exactly; the order in a larger one is nobody's promise
        }
        for (int step = 0; step < 25 && !HasFatalFailure(); ++step) {
            switch (random.Below(8)) {
            case 0:
                calls += " HasCycle";
                ASSERT_EQ(plain_.HasCycle(), graph_.HasCycle()) << calls;
                break;
            case 1:
            case 2:
            case 3:
                calls += " GetNoDependVertices";
                ASSERT_EQ(plain_.GetNoDependVertices(), graph_.GetNoDependVertices()) << calls;
                break;
            default: {
                const std::string name = (random.OneIn(4) ? "m" : "v") + std::to_string(random.Below(5));
                calls += " Pop " + name;
                ASSERT_EQ(plain_.Pop(name), graph_.Pop(name)) << calls;
            }
            }
            ASSERT_EQ(plain_.IsEmpty(), graph_.IsEmpty()) << calls;
            ASSERT_EQ(plainLines_, log_.Take()) << calls;
            plainLines_.clear();
        }
    }
}

} // namespace
