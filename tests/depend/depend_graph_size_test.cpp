// Graphs as deep as a file may make them: nothing here may recurse over the input.

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>
#include <syslog.h>

#include "startplan/depend_graph.h"
#include "tests/support/graph_driver.h"
#include "tests/support/log_capture.h"

namespace {

using test_support::GraphInput;
using test_support::Lines;
using test_support::LogCapture;
using Names = std::set<std::string>;

constexpr std::size_t kDeep = 100000;
constexpr std::size_t kSmallStack = 256 * 1024;

std::string Vertex(std::size_t number)
{
    const std::string digits = std::to_string(number);
    return "v" + std::string(6 - digits.size(), '0') + digits;
}

// Each vertex depends on the one before it.
const GraphInput& DeepChain()
{
    static const GraphInput chain = [] {
        GraphInput input = {{Vertex(0), {}}};
        for (std::size_t i = 1; i < kDeep; ++i) {
            input[Vertex(i)] = {Vertex(i - 1)};
        }
        return input;
    }();
    return chain;
}

// The same, closed to a ring.
GraphInput LongCycle()
{
    GraphInput ring = DeepChain();
    ring[Vertex(0)] = {Vertex(kDeep - 1)};
    return ring;
}

void* Call(void* body)
{
    (*static_cast<std::function<void()>*>(body))();
    return nullptr;
}

void RunOnSmallStack(std::function<void()> body)
{
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, kSmallStack));
    pthread_t thread{};
    ASSERT_EQ(0, pthread_create(&thread, &attributes, Call, &body));
    EXPECT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

void WalkDownAChain()
{
    DependGraph graph;
    graph.Update(DeepChain());

    EXPECT_FALSE(graph.HasCycle());

    EXPECT_EQ(Names({Vertex(0)}), graph.GetNoDependVertices());
    EXPECT_TRUE(graph.Pop(Vertex(0)));
    EXPECT_EQ(Names({Vertex(1)}), graph.GetNoDependVertices());
    EXPECT_FALSE(graph.IsEmpty());
    graph.Clear();
    EXPECT_TRUE(graph.IsEmpty());
}

void FindALongCycle()
{
    const LogCapture log;
    DependGraph graph;
    graph.Update(LongCycle());

    EXPECT_TRUE(graph.HasCycle());

    EXPECT_EQ(Names(), graph.GetNoDependVertices());
}

TEST(DependGraphSizeTest, ADeepChainIsWalkedDown)
{
    WalkDownAChain();
}

TEST(DependGraphSizeTest, ADeepChainIsWalkedDownOnASmallStack)
{
    RunOnSmallStack(WalkDownAChain);
}

TEST(DependGraphSizeTest, ALongCycleIsFoundOnASmallStack)
{
    RunOnSmallStack(FindALongCycle);
}

TEST(DependGraphSizeTest, ALongCycleIsNamedWhole)
{
    LogCapture log;
    DependGraph graph;
    graph.Update(LongCycle());

    EXPECT_TRUE(graph.HasCycle());

    const Lines lines = log.Take();
    ASSERT_EQ(1U, lines.size());
    const std::string begin = "The Graph has cycle. the cycle is :";
    const std::size_t width = Vertex(0).size() + 1; // the blank behind each name
    ASSERT_EQ(begin.size() + kDeep * width, lines[0].text.size());
    Names named;
    for (std::size_t i = 0; i < kDeep; ++i) {
        ASSERT_EQ(' ', lines[0].text[begin.size() + (i + 1) * width - 1]);
        named.insert(lines[0].text.substr(begin.size() + i * width, width - 1));
    }
    EXPECT_EQ(kDeep, named.size());
    EXPECT_EQ(Vertex(0), *named.begin());
    EXPECT_EQ(Vertex(kDeep - 1), *named.rbegin());
}

TEST(DependGraphSizeTest, EveryVertexOfAWideGraphComesInTwoRounds)
{
    GraphInput star;
    for (std::size_t i = 0; i < kDeep; ++i) {
        star[Vertex(i)] = {"centre"};
    }
    star["centre"] = {};
    DependGraph graph;
    graph.Update(star);
    EXPECT_FALSE(graph.HasCycle());

    EXPECT_EQ(Names({"centre"}), graph.GetNoDependVertices());
    EXPECT_TRUE(graph.Pop("centre"));
    const Names rest = graph.GetNoDependVertices();

    EXPECT_EQ(kDeep, rest.size());
    for (const std::string& name : rest) {
        ASSERT_TRUE(graph.Pop(name));
    }
    EXPECT_TRUE(graph.IsEmpty());
}

} // namespace
