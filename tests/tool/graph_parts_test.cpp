// The walks over a graph against plain ones, on random graphs with and without cycles.

#include <algorithm>
#include <cstddef>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tool/graph/graph_highlight.h"
#include "tool/graph/graph_layers.h"
#include "tool/graph/graph_layout.h"
#include "tool/graph/graph_picture.h"
#include "tool/graph/graph_reduction.h"
#include "tool/graph/graph_selection.h"

namespace {

using tool::GraphEdge;
using tool::GraphPicture;
using tool::Vertex;
using Matrix = std::vector<std::vector<bool>>;

constexpr std::size_t kFar = std::numeric_limits<std::size_t>::max();

GraphPicture PictureOf(const Matrix& edges)
{
    GraphPicture picture;
    for (std::size_t from = 0; from < edges.size(); ++from) {
        picture.nodes.emplace_back();
        picture.nodes.back().name = std::string(1, static_cast<char>('a' + from));
        for (std::size_t to = 0; to < edges.size(); ++to) {
            if (edges[from][to]) {
                picture.edges.push_back({static_cast<Vertex>(from), static_cast<Vertex>(to), false});
            }
        }
    }
    return picture;
}

Matrix EdgesOf(const GraphPicture& picture)
{
    Matrix edges(picture.nodes.size(), std::vector<bool>(picture.nodes.size()));
    for (const GraphEdge& edge : picture.edges) {
        edges[edge.from][edge.to] = true;
    }
    return edges;
}

// Which vertex reaches which by one edge or more.
Matrix PlainReach(Matrix reach)
{
    for (std::size_t via = 0; via < reach.size(); ++via) {
        for (std::size_t from = 0; from < reach.size(); ++from) {
            for (std::size_t to = 0; to < reach.size(); ++to) {
                reach[from][to] = reach[from][to] || (reach[from][via] && reach[via][to]);
            }
        }
    }
    return reach;
}

// Edges forwards only for a graph without cycles.
Matrix RandomEdges(std::mt19937& random, bool hasCycles)
{
    const std::size_t size = 1 + random() % 9;
    const std::size_t oneIn = 2 + random() % 5;
    Matrix edges(size, std::vector<bool>(size));
    for (std::size_t from = 0; from < size; ++from) {
        for (std::size_t to = 0; to < size; ++to) {
            edges[from][to] = random() % oneIn == 0 && (hasCycles || to < from);
        }
    }
    return edges;
}

class GraphPartsTest : public testing::Test {
protected:
    // Calls `check` with the edges of many graphs.
    template <typename Check>
    void ForRandomGraphs(bool hasCycles, const Check& check)
    {
        std::mt19937 random(20240607);
        for (int i = 0; i < 400 && !HasFailure(); ++i) {
            SCOPED_TRACE("graph " + std::to_string(i));
            check(RandomEdges(random, hasCycles));
        }
    }
};

TEST_F(GraphPartsTest, ReductionWithoutCyclesKeepsWhatIsReachedAndNothingNeedless)
{
    ForRandomGraphs(false, [](const Matrix& edges) {
        GraphPicture picture = PictureOf(edges);
        const std::size_t before = picture.edges.size();

        const std::size_t count = Reduce(picture);

        EXPECT_EQ(count, before - picture.edges.size());
        const Matrix reduced = EdgesOf(picture);
        EXPECT_EQ(PlainReach(reduced), PlainReach(edges));
        for (const GraphEdge& edge : picture.edges) {
            Matrix without = reduced;
            without[edge.from][edge.to] = false;
            EXPECT_NE(PlainReach(without), PlainReach(edges)) << edge.from << " -> " << edge.to;
        }
    });
}

TEST_F(GraphPartsTest, ReductionWithCyclesKeepsWhatIsReachedAndEveryCycle)
{
    ForRandomGraphs(true, [](const Matrix& edges) {
        GraphPicture picture = PictureOf(edges);

        Reduce(picture);

        const Matrix reduced = EdgesOf(picture);
        const Matrix reach = PlainReach(edges);
        EXPECT_EQ(PlainReach(reduced), reach);
        for (std::size_t from = 0; from < edges.size(); ++from) {
            for (std::size_t to = 0; to < edges.size(); ++to) {
                EXPECT_TRUE(!edges[from][to] || !reach[to][from] || reduced[from][to]);
            }
        }
    });
}

TEST_F(GraphPartsTest, ReductionOfAGraphOfManyBlocksKeepsOneChain)
{
    constexpr Vertex kSize = 9000; // more than two blocks of components
    GraphPicture picture;
    picture.nodes.resize(kSize);
    for (Vertex from = 1; from < kSize; ++from) {
        const std::set<Vertex> targets = {from / 10, from / 2, from - 1};
        for (const Vertex to : targets) {
            picture.edges.push_back({from, to, false});
        }
    }

    Reduce(picture);

    ASSERT_EQ(picture.edges.size(), kSize - 1);
    for (const GraphEdge& edge : picture.edges) {
        EXPECT_EQ(edge.to + 1, edge.from);
    }
}

TEST_F(GraphPartsTest, CyclesAreTheVerticesThatReachThemselves)
{
    ForRandomGraphs(true, [](const Matrix& edges) {
        GraphPicture picture = PictureOf(edges);

        HighlightCycles(picture);

        const Matrix reach = PlainReach(edges);
        for (std::size_t node = 0; node < edges.size(); ++node) {
            EXPECT_EQ(picture.nodes[node].isHighlighted, reach[node][node]) << node;
        }
        for (const GraphEdge& edge : picture.edges) {
            EXPECT_EQ(edge.isHighlighted, reach[edge.to][edge.from]) << edge.from << " -> " << edge.to;
        }
    });
}

TEST_F(GraphPartsTest, TheLongestChainIsOneAndNoneIsLonger)
{
    ForRandomGraphs(false, [](const Matrix& edges) {
        GraphPicture picture = PictureOf(edges);

        const std::size_t count = HighlightLongestChain(picture);

        std::vector<std::size_t> lengths(edges.size(), 1); // edges lead to smaller vertices only
        for (std::size_t from = 0; from < edges.size(); ++from) {
            for (std::size_t to = 0; to < from; ++to) {
                lengths[from] = std::max(lengths[from], edges[from][to] ? lengths[to] + 1 : 0);
            }
        }
        const std::size_t longest = *std::max_element(lengths.begin(), lengths.end());
        EXPECT_EQ(count, longest == 1 ? 0 : longest);
        std::size_t nodes = 0;
        std::size_t arrows = 0;
        for (const auto& node : picture.nodes) {
            nodes += node.isHighlighted ? 1 : 0;
        }
        for (const GraphEdge& edge : picture.edges) {
            arrows += edge.isHighlighted ? 1 : 0;
        }
        EXPECT_EQ(nodes, count);
        EXPECT_EQ(arrows, count == 0 ? 0 : count - 1);
    });
}

// Steps of the shortest way, kFar for none.
std::vector<std::size_t> PlainSteps(const Matrix& edges, std::size_t start)
{
    std::vector<std::size_t> steps(edges.size(), kFar);
    steps[start] = 0;
    for (std::size_t round = 0; round < edges.size(); ++round) {
        for (std::size_t from = 0; from < edges.size(); ++from) {
            for (std::size_t to = 0; to < edges.size(); ++to) {
                if (steps[from] != kFar && edges[from][to]) {
                    steps[to] = std::min(steps[to], steps[from] + 1);
                }
            }
        }
    }
    return steps;
}

Matrix Turned(const Matrix& edges)
{
    Matrix turned = edges;
    for (std::size_t from = 0; from < edges.size(); ++from) {
        for (std::size_t to = 0; to < edges.size(); ++to) {
            turned[to][from] = edges[from][to];
        }
    }
    return turned;
}

TEST_F(GraphPartsTest, AFocusHoldsWhatIsNotTooFar)
{
    ForRandomGraphs(true, [](const Matrix& edges) {
        const GraphPicture picture = PictureOf(edges);
        const std::size_t start = edges.size() / 2;
        const std::vector<std::size_t> down = PlainSteps(edges, start);
        const std::vector<std::size_t> up = PlainSteps(Turned(edges), start);
        for (std::size_t depth = 0; depth < 3; ++depth) {
            const std::vector<bool> isDown = Reached(picture, {start}, tool::Direction::DOWN, depth);
            const std::vector<bool> isUp = Reached(picture, {start}, tool::Direction::UP, depth);
            const std::vector<bool> isEither = Reached(picture, {start}, tool::Direction::BOTH, depth);
            for (std::size_t node = 0; node < edges.size(); ++node) {
                EXPECT_EQ(isDown[node], down[node] <= depth);
                EXPECT_EQ(isUp[node], up[node] <= depth);
                EXPECT_EQ(isEither[node], down[node] <= depth || up[node] <= depth);
            }
        }
    });
}

TEST_F(GraphPartsTest, ACutHoldsTheKeptNodesAndTheirEdges)
{
    ForRandomGraphs(true, [](const Matrix& edges) {
        std::vector<bool> isKept;
        std::vector<std::size_t> numbers;
        for (std::size_t node = 0; node < edges.size(); ++node) {
            isKept.push_back(node % 3 != 1);
            if (isKept.back()) {
                numbers.push_back(node);
            }
        }

        const GraphPicture cut = Cut(PictureOf(edges), isKept);

        ASSERT_EQ(cut.nodes.size(), numbers.size());
        const Matrix left = EdgesOf(cut);
        for (std::size_t from = 0; from < numbers.size(); ++from) {
            EXPECT_EQ(cut.nodes[from].name, std::string(1, static_cast<char>('a' + numbers[from])));
            for (std::size_t to = 0; to < numbers.size(); ++to) {
                EXPECT_EQ(left[from][to], edges[numbers[from]][numbers[to]]);
            }
        }
    });
}

TEST_F(GraphPartsTest, LayersAreBehindWhatTheyWaitForAndHoldEachNodeOnce)
{
    ForRandomGraphs(true, [](const Matrix& edges) {
        const GraphPicture picture = PictureOf(edges);

        const tool::GraphLayers layers = MakeLayers(picture);

        const Matrix reach = PlainReach(edges);
        for (const GraphEdge& edge : picture.edges) {
            const std::size_t from = layers.slots[edge.from].layer;
            const std::size_t to = layers.slots[edge.to].layer;
            EXPECT_TRUE(from > to || reach[edge.to][edge.from]) << edge.from << " -> " << edge.to;
            EXPECT_TRUE(from != to || edge.from == edge.to);
        }
        std::vector<std::size_t> seen(layers.slots.size());
        for (std::size_t layer = 0; layer < layers.layers.size(); ++layer) {
            for (const Vertex slot : layers.layers[layer]) {
                EXPECT_EQ(layers.slots[slot].layer, layer);
                ++seen[slot];
            }
        }
        EXPECT_EQ(seen, std::vector<std::size_t>(layers.slots.size(), 1));
    });
}

TEST_F(GraphPartsTest, NoTwoNodesOverlap)
{
    ForRandomGraphs(true, [](const Matrix& edges) {
        const tool::GraphLayout layout = LayOut(PictureOf(edges), std::vector<double>(edges.size(), 50.0));

        ASSERT_EQ(layout.nodes.size(), edges.size());
        for (std::size_t a = 0; a < edges.size(); ++a) {
            const tool::Box& one = layout.nodes[a];
            EXPECT_GE(one.corner.x, 0);
            EXPECT_GE(one.corner.y, 0);
            EXPECT_LE(one.corner.x + one.width, layout.width);
            EXPECT_LE(one.corner.y + one.height, layout.height);
            for (std::size_t b = 0; b < a; ++b) {
                const tool::Box& other = layout.nodes[b];
                EXPECT_TRUE(one.corner.x >= other.corner.x + other.width ||
                            other.corner.x >= one.corner.x + one.width ||
                            one.corner.y >= other.corner.y + other.height ||
                            other.corner.y >= one.corner.y + one.height);
            }
        }
    });
}

} // namespace
