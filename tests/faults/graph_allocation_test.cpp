// Every allocation of each graph operation fails once. After every fault the graph
// is asked something on the spot: were its mutex still held, the test would hang and run into its time limit.

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "tests/faults/every_allocation.h"

namespace {

using namespace faults;
using Filling = std::map<std::string, Names>;

// Names that need memory of their own.
const Filling kFilling = {
    {"application_on_the_ground_floor", {}},
    {"application_on_the_first_floor", {"application_on_the_ground_floor"}},
    {"application_on_the_second_floor", {"application_on_the_first_floor"}},
    {"application_beside_the_others", {}},
};
// Some are no keys. In which round they are handed out depends on the table's layout.
const Filling kMissing = {
    {"application_on_the_ground_floor", {}},
    {"application_on_the_first_floor", {"application_on_the_ground_floor"}},
    {"application_on_the_second_floor", {"application_on_the_first_floor", "gone_application_of_this_name"}},
    {"application_beside_the_others", {"gone_application_of_another_name"}},
};
const Filling kCycle = {
    {"application_on_the_ground_floor", {"application_on_the_first_floor"}},
    {"application_on_the_first_floor", {"application_on_the_ground_floor"}},
};

Rounds DrainedWithoutFaults(const Filling& filling)
{
    DependGraph graph;
    graph.Update(filling);
    return Drain(graph);
}

// Every name that a graph of a few names hands out to a caller that asks again and again. A round may be
// empty in between where names are missing, and IsEmpty() counts their pops too.
Names AllOf(DependGraph& graph)
{
    Names all;
    for (int round = 0; round < 20; ++round) {
        for (const std::string& name : graph.GetNoDependVertices()) {
            EXPECT_TRUE(all.insert(name).second) << name;
            EXPECT_TRUE(graph.Pop(name));
        }
    }
    return all;
}

TEST(GraphAllocationTest, AGraphThatUpdateCouldNotFillCanBeFilledAgain)
{
    const std::uint64_t count = ForEachAllocation([](std::uint64_t number) {
        DependGraph graph;
        graph.Update(kCycle); // what was there before is gone in any case
        const bool hasFailed = FailsAt(number, [&graph] { graph.Update(kFilling); });
        if (hasFailed) {
            graph.IsEmpty();
            graph.Update(kFilling);
        }
        EXPECT_EQ(DrainedWithoutFaults(kFilling), Drain(graph));
        return hasFailed;
    });
    EXPECT_GT(count, 10U);
}

TEST(GraphAllocationTest, AGraphThatUpdateCouldNotFillCanBeCleared)
{
    DependGraph graph;
    ASSERT_TRUE(FailsAt(3, [&graph] { graph.Update(kFilling); }));

    graph.Clear();

    EXPECT_TRUE(graph.IsEmpty());
    EXPECT_TRUE(graph.GetNoDependVertices().empty());
}

TEST(GraphAllocationTest, HasCycleThatFailedChangesNoVertex)
{
    // Half way through: one vertex popped, one handed out.
    const auto begin = [](DependGraph& graph) {
        graph.Update(kFilling);
        graph.GetNoDependVertices();
        graph.Pop("application_on_the_ground_floor");
        graph.GetNoDependVertices();
    };
    const auto rest = [](DependGraph& graph) {
        EXPECT_TRUE(graph.Pop("application_on_the_first_floor"));
        EXPECT_TRUE(graph.Pop("application_beside_the_others"));
        return Drain(graph);
    };
    DependGraph untouched;
    begin(untouched);
    const Rounds expected = rest(untouched);

    const std::uint64_t count = ForEachAllocation([&](std::uint64_t number) {
        DependGraph graph;
        begin(graph);
        const bool hasFailed = FailsAt(number, [&graph] { graph.HasCycle(); });
        if (hasFailed) {
            EXPECT_FALSE(graph.IsEmpty());
            EXPECT_EQ(expected, rest(graph));
        }
        return hasFailed;
    });
    EXPECT_GT(count, 3U);
}

TEST(GraphAllocationTest, HasCycleSucceedsAfterItFailed)
{
    for (const bool hasCycle : {false, true}) {
        const std::uint64_t count = ForEachAllocation([hasCycle](std::uint64_t number) {
            DependGraph graph;
            graph.Update(hasCycle ? kCycle : kFilling);
            const bool hasFailed = FailsAt(number, [&graph] { graph.HasCycle(); });
            EXPECT_EQ(hasCycle, graph.HasCycle());
            return hasFailed;
        });
        EXPECT_GT(count, 3U);
    }
}

TEST(GraphAllocationTest, AGraphWithMissingNamesIsStillHandedOutWholeAfterAnyFault)
{
    Names expected;
    for (const auto& [name, depends] : kMissing) {
        expected.insert(name);
        expected.insert(depends.begin(), depends.end());
    }
    using Operation = void (*)(DependGraph&);
    for (const Operation operation : {Operation([](DependGraph& graph) { graph.HasCycle(); }),
                                      Operation([](DependGraph& graph) { graph.GetNoDependVertices(); })}) {
        const std::uint64_t count = ForEachAllocation([&](std::uint64_t number) {
            DependGraph graph;
            graph.Update(kMissing);
            const bool hasFailed = FailsAt(number, [&] { operation(graph); });
            if (hasFailed) {
                EXPECT_EQ(expected, AllOf(graph));
            }
            return hasFailed;
        });
        EXPECT_GT(count, 3U);
    }
}

TEST(GraphAllocationTest, GetNoDependVerticesThatFailedLosesNoVertex)
{
    const std::uint64_t count = ForEachAllocation([](std::uint64_t number) {
        DependGraph graph;
        graph.Update(kFilling);
        const bool hasFailed = FailsAt(number, [&graph] { graph.GetNoDependVertices(); });
        if (hasFailed) {
            EXPECT_FALSE(graph.IsEmpty());
            EXPECT_EQ(DrainedWithoutFaults(kFilling), Drain(graph));
        }
        return hasFailed;
    });
    EXPECT_GT(count, 3U);
}

TEST(GraphAllocationTest, PopIsEmptyAndClearAllocateNothing)
{
    DependGraph graph;
    graph.Update(kFilling);
    graph.GetNoDependVertices();
    const std::string known = "application_on_the_ground_floor";
    const std::string unknown = "gone_application_of_a_third_name";

    EXPECT_FALSE(FailsAt(1, [&] {
        graph.Pop(known);
        graph.Pop(unknown);
        graph.IsEmpty();
        graph.Clear();
    }));
}

} // namespace
