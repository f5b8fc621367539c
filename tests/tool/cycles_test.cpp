#include "tool/plan/cycles.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "tool/library/log_collector.h"

namespace {

using tool::Cycle;
using tool::Waits;

// Plain: how many steps lead from one vertex to another, at least one; 0 for none.
using Steps = std::vector<std::vector<std::size_t>>;

Steps PlainSteps(const std::vector<std::vector<bool>>& edges)
{
    const std::size_t size = edges.size();
    Steps steps(size, std::vector<std::size_t>(size, 0));
    for (std::size_t from = 0; from < size; ++from) {
        for (std::size_t length = 1; length <= size; ++length) {
            for (std::size_t to = 0; to < size; ++to) {
                bool isReached = length == 1 && edges[from][to];
                for (std::size_t via = 0; via < size; ++via) {
                    isReached = isReached || (length > 1 && steps[from][via] == length - 1 && edges[via][to]);
                }
                if (isReached && steps[from][to] == 0) {
                    steps[from][to] = length;
                }
            }
        }
    }
    return steps;
}

std::string Name(std::size_t vertex)
{
    return std::string(1, static_cast<char>('a' + vertex));
}

std::size_t Vertex(const std::string& name)
{
    return static_cast<std::size_t>(name.front() - 'a');
}

Waits ToWaits(const std::vector<std::vector<bool>>& edges)
{
    Waits waits;
    for (std::size_t from = 0; from < edges.size(); ++from) {
        std::set<std::string>& row = waits[Name(from)];
        for (std::size_t to = 0; to < edges.size(); ++to) {
            if (edges[from][to]) {
                row.insert(Name(to));
            }
        }
    }
    return waits;
}

void ExpectAgreement(const std::vector<std::vector<bool>>& edges)
{
    const Steps steps = PlainSteps(edges);
    const Waits waits = ToWaits(edges);
    const std::vector<Cycle> cycles = tool::FindCycles(waits);

    std::set<std::string> onCycles;
    for (const Cycle& cycle : cycles) {
        ASSERT_FALSE(cycle.shortest.empty());
        std::size_t shortest = edges.size() + 1;
        std::vector<std::string> members;
        const std::size_t first = Vertex(cycle.members.front());
        for (std::size_t other = 0; other < edges.size(); ++other) {
            if (other == first || (steps[first][other] != 0 && steps[other][first] != 0)) {
                members.push_back(Name(other));
                shortest = std::min(shortest, steps[other][other] == 0 ? shortest : steps[other][other]);
            }
        }
        EXPECT_EQ(members, cycle.members);
        EXPECT_EQ(shortest, cycle.shortest.size());
        EXPECT_EQ(cycle.shortest.front(), *std::min_element(cycle.shortest.begin(), cycle.shortest.end()));
        for (std::size_t i = 0; i < cycle.shortest.size(); ++i) {
            const std::string& next = cycle.shortest[(i + 1) % cycle.shortest.size()];
            EXPECT_TRUE(edges[Vertex(cycle.shortest[i])][Vertex(next)]);
        }
        for (const std::string& member : cycle.members) {
            EXPECT_TRUE(onCycles.insert(member).second) << member << " is in two cycles";
        }
    }

    std::vector<std::string> blocked;
    for (std::size_t vertex = 0; vertex < edges.size(); ++vertex) {
        EXPECT_EQ(steps[vertex][vertex] != 0, onCycles.count(Name(vertex)) != 0) << Name(vertex);
        const bool waitsForOne = std::any_of(onCycles.begin(), onCycles.end(), [&](const std::string& name) {
            return steps[vertex][Vertex(name)] != 0;
        });
        if (waitsForOne && onCycles.count(Name(vertex)) == 0) {
            blocked.push_back(Name(vertex));
        }
    }
    EXPECT_EQ(blocked, tool::BlockedBy(waits, cycles));

    const tool::LogCollector unheard;
    DependGraph graph;
    graph.Update(waits);
    EXPECT_EQ(graph.HasCycle(), !cycles.empty());
}

TEST(CyclesTest, EveryGraphOfThreeVerticesAgreesWithThePlainModelAndTheLibrary)
{
    for (unsigned bits = 0; bits < 512; ++bits) {
        SCOPED_TRACE(bits);
        std::vector<std::vector<bool>> edges(3, std::vector<bool>(3));
        for (unsigned i = 0; i < 9; ++i) {
            edges[i / 3][i % 3] = (bits >> i & 1U) != 0;
        }
        ExpectAgreement(edges);
    }
}

TEST(CyclesTest, RandomGraphsAgreeWithThePlainModelAndTheLibrary)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const std::size_t size = 2 + random() % 11;
        const auto oneIn = 2 + random() % 12;
        std::vector<std::vector<bool>> edges(size, std::vector<bool>(size));
        for (std::vector<bool>& row : edges) {
            for (std::size_t to = 0; to < size; ++to) {
                row[to] = random() % oneIn == 0;
            }
        }
        ExpectAgreement(edges);
    }
}

TEST(CyclesTest, ALongChainNeedsNoStack)
{
    constexpr int kLength = 200'000;
    Waits waits;
    for (int i = 0; i < kLength; ++i) {
        waits[std::to_string(i)] = {std::to_string((i + 1) % kLength)};
    }
    waits["0"] = {};

    EXPECT_TRUE(tool::FindCycles(waits).empty());
}

TEST(CyclesTest, ALongRingIsFoundInShortTime)
{
    constexpr std::size_t kLength = 100'000;
    Waits waits;
    for (std::size_t i = 0; i < kLength; ++i) {
        waits[std::to_string(i)] = {std::to_string((i + 1) % kLength)};
    }

    const std::vector<Cycle> cycles = tool::FindCycles(waits);

    ASSERT_EQ(1U, cycles.size());
    EXPECT_EQ(kLength, cycles[0].shortest.size());
}

TEST(CyclesTest, ANameThatIsNoKeyWaitsForNothing)
{
    EXPECT_TRUE(tool::FindCycles({{"a", {"b"}}, {"c", {"a"}}}).empty());
}

} // namespace
