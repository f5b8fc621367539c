#include "tool/plan/graph_view.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/random_seed.h"

namespace {

using tool::GraphView;
using tool::Vertex;

using Names = std::vector<std::string>;

Names NamesOf(const GraphView& view, const std::vector<Vertex>& vertices)
{
    Names names;
    for (const Vertex vertex : vertices) {
        names.push_back(view.names[vertex]);
    }
    return names;
}

Vertex VertexOf(const GraphView& view, const std::string& name)
{
    return static_cast<Vertex>(view.Find(name));
}

TEST(GraphViewTest, NumbersNamesInTheirOrderAndKeepsBothDirections)
{
    const GraphView view =
        tool::ViewOf(tool::Waits{{"web", {"net", "disk"}}, {"net", {"disk"}}, {"log", {}}});

    EXPECT_EQ(view.names, (Names{"disk", "log", "net", "web"}));
    EXPECT_EQ(view.isKnown, (std::vector<bool>{false, true, true, true}));
    EXPECT_EQ(NamesOf(view, view.needs[VertexOf(view, "web")]), (Names{"disk", "net"}));
    EXPECT_EQ(NamesOf(view, view.neededBy[VertexOf(view, "disk")]), (Names{"net", "web"}));
    EXPECT_EQ(view.EdgeCount(), 3U);
    EXPECT_EQ(view.Find("we"), tool::kNone);
    EXPECT_EQ(view.Find("webb"), tool::kNone);
}

TEST(GraphViewTest, TheTableGivesTheSameViewAsTheSameMap)
{
    const GraphView view = tool::ViewOf(ParseAndDepend::DependsMap{{"web", {"net"}}, {"net", {}}});

    EXPECT_EQ(view.names, (Names{"net", "web"}));
    EXPECT_EQ(NamesOf(view, view.needs[1]), Names{"net"});
}

TEST(GraphViewTest, OfShortestWaysTheFirstByNameIsTaken)
{
    const GraphView view =
        tool::ViewOf(tool::Waits{{"a", {"c", "b"}}, {"b", {"z"}}, {"c", {"z"}}, {"z", {"a"}}, {"lone", {}}});
    const tool::Ways ways = tool::FindWays(view.needs, VertexOf(view, "a"));

    EXPECT_EQ(NamesOf(view, ways.To(VertexOf(view, "z"))), (Names{"a", "b", "z"}));
    EXPECT_EQ(NamesOf(view, ways.To(VertexOf(view, "a"))), Names{"a"});
    EXPECT_FALSE(ways.Reaches(VertexOf(view, "lone")));
    EXPECT_TRUE(ways.To(VertexOf(view, "lone")).empty());
}

// Plain: the distances that no edge can shorten any more.
std::vector<std::uint32_t> PlainSteps(const GraphView& view, Vertex start)
{
    std::vector<std::uint32_t> steps(view.Size(), tool::kFar);
    steps[start] = 0;
    for (std::size_t round = 0; round < view.Size(); ++round) {
        for (Vertex from = 0; from < view.Size(); ++from) {
            for (const Vertex to : view.needs[from]) {
                if (steps[from] != tool::kFar && steps[to] > steps[from] + 1) {
                    steps[to] = steps[from] + 1;
                }
            }
        }
    }
    return steps;
}

TEST(GraphViewTest, WaysInRandomGraphsAreShortest)
{
    test_support::Random random;
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        tool::Waits waits;
        for (int i = 0; i < 20; ++i) {
            waits[random.Text("abc", 2)].insert(random.Text("abc", 2));
        }
        const GraphView view = tool::ViewOf(waits);
        for (Vertex start = 0; start < view.Size(); ++start) {
            const tool::Ways ways = tool::FindWays(view.needs, start);
            EXPECT_EQ(ways.steps, PlainSteps(view, start));
            for (Vertex end = 0; end < view.Size(); ++end) {
                const std::vector<Vertex> way = ways.To(end);
                ASSERT_EQ(way.size(), ways.Reaches(end) ? ways.steps[end] + 1 : 0);
                for (std::size_t i = 0; i + 1 < way.size(); ++i) {
                    EXPECT_EQ(waits.at(view.names[way[i]]).count(view.names[way[i + 1]]), 1U);
                }
            }
        }
    }
}

} // namespace
