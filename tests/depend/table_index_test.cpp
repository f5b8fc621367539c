// The graph builders next to the plain walks of tests/support, with requests so small that the library
// walks its table too, and with ones so large that it builds an index first.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "tests/support/graph_driver.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_graph_builders.h"
#include "tests/support/random_seed.h"

namespace {

using test_support::HandOutAll;
using test_support::Lines;
using test_support::LogCapture;
using test_support::PlainBuild;
using test_support::PlainDependGraph;
using test_support::PlainGraphBuilders;
using test_support::Random;
using Names = std::vector<std::string>;
using Table = ParseAndDepend::DependsMap;

class TableIndexTest : public ::testing::TestWithParam<std::size_t> {
protected:
    // Exactly as many names as the parameter says, from `make`.
    static Names Request(const std::function<std::string()>& make)
    {
        Names names;
        while (names.size() < GetParam()) {
            names.push_back(make());
        }
        return names;
    }

    void ExpectSameGraphs(const Table& table, const Names& names)
    {
        ParseAndDepend front;
        front.SetApplicationDependsMap(table);
        const PlainGraphBuilders builders(front.GetApplicationDependsMap(), plainLines_);
        {
            SCOPED_TRACE("start");
            PlainDependGraph plainGraph(plainLines_);
            const PlainBuild plain = builders.Start(names, plainGraph);
            DependGraph graph;
            Names errApps;
            ExpectSameResult(plain, front.GetStartGraphWithErrApp(names, graph, errApps), errApps);
            ExpectSameGraph(plainGraph, graph);
        }
        {
            SCOPED_TRACE("term");
            PlainDependGraph plainGraph(plainLines_);
            const PlainBuild plain = builders.Term(names, plainGraph);
            DependGraph graph;
            Names errApps;
            ExpectSameResult(plain, front.GetTermGraphWithErrApp(names, graph, errApps), errApps);
            ExpectSameGraph(plainGraph, graph);
        }
    }

    void ExpectSameResult(const PlainBuild& plain, std::uint32_t result, const Names& errApps)
    {
        EXPECT_EQ(plain.result, result);
        EXPECT_EQ(plain.errApps, errApps);
        ExpectSameLog();
    }

    void ExpectSameGraph(PlainDependGraph& plain, DependGraph& graph)
    {
        EXPECT_EQ(HandOutAll(plain), HandOutAll(graph));
        ExpectSameLog();
    }

    void ExpectSameLog()
    {
        EXPECT_EQ(plainLines_, log_.Take());
        plainLines_.clear();
    }

    Lines plainLines_;
    LogCapture log_;
};

// A dependency that is requested but cannot be found would make the graph's order open, so every name that
// appears as a dependency is a key here or is not requested.
TEST_P(TableIndexTest, TablesOfPatternsGiveTheGraphsOfAPlainWalk)
{
    const Names literals = {"", "a", "ab", "abc", "b", "ba", "app_", "app_1", "svc"};
    const Names tails = {"",   "",        "<1-3>", "<*>", "<*PATH>", "<2,x>",
                         "<>", "<3-1>_z", "<*>_z", "z<7", "<0><*>b"};
    const Names nameTails = {"", "1", "2", "7", "x", "..", "_z", "b", "3_z"};
    Random random;
    for (int round = 0; round < 6; ++round) {
        Table table;
        for (std::size_t keys = 1 + random.Below(60); keys > 0; --keys) {
            auto& depends =
                table[literals[random.Below(literals.size())] + tails[random.Below(tails.size())]];
            for (std::size_t count = random.Below(3); count > 0; --count) {
                depends.insert("extern" + std::to_string(random.Below(5)));
            }
        }
        ExpectSameGraphs(table, Request([&] {
                             return literals[random.Below(literals.size())] +
                                    nameTails[random.Below(nameTails.size())];
                         }));
    }
}

TEST_P(TableIndexTest, KeysThatBeginWithOneAnotherGiveTheGraphsOfAPlainWalk)
{
    Random random;
    for (int round = 0; round < 6; ++round) {
        Table table;
        for (std::size_t keys = 1 + random.Below(80); keys > 0; --keys) {
            table["n" + random.Text("ab", 6)] = {};
        }
        ExpectSameGraphs(table, Request([&] { return "n" + random.Text("ab", 8); }));
    }
}

TEST_P(TableIndexTest, TablesFullOfEdgesGiveTheGraphsOfAPlainWalk)
{
    Random random;
    for (int round = 0; round < 6; ++round) {
        Table table;
        Names keys;
        for (std::size_t i = 0; i < 80; ++i) {
            keys.push_back("v" + std::to_string(i) + "_");
            for (std::size_t count = random.Below(4); count > 0 && i > 0; --count) {
                // Backwards, so that there is a cycle only where one more edge makes it.
                table[keys[i]].insert(keys[random.Below(i)]);
            }
            table[keys[i]];
        }
        if (random.OneIn(3)) {
            table[keys[0]].insert(keys[random.Below(keys.size())]);
        }
        ExpectSameGraphs(table, Request([&] { return keys[random.Below(keys.size())]; }));
    }
}

TEST_P(TableIndexTest, NamesAndKeysOfImpossibleLengthLogTheLinesOfAPlainWalk)
{
    const Names longNames = {"",  std::string(1025, 'a'), std::string(1024, 'a'), std::string(1023, 'a'), "a",
                             "zz"};
    Random random;
    for (int round = 0; round < 6; ++round) {
        Table table; // some of them only: a key that matches much hides those behind it
        for (const std::string& name : longNames) {
            if (random.OneIn(2)) {
                table[name] = {"extern"};
            }
            if (random.OneIn(4)) {
                table[name + "<*>"] = {};
            }
        }
        ExpectSameGraphs(table, Request([&] { return longNames[random.Below(longNames.size())]; }));
    }
    ExpectSameGraphs({}, Request([&] { return longNames[random.Below(longNames.size())]; }));
}

// Such a key matches nothing and logs one line for each name, whatever the name begins with.
TEST_P(TableIndexTest, AKeyThatIsTooLongLogsALineForEveryName)
{
    Random random;
    const Table table = {{std::string(1025, 'a'), {}}, {std::string(1024, 'b') + "<*>", {}}};

    ExpectSameGraphs(table, Request([&] { return random.Text("ab", 3) + "c"; }));
}

TEST_P(TableIndexTest, NamesThatMatchNothingAreReportedOneByOne)
{
    Random random;
    const Table table = {{"m", {}}, {"<1-5>", {}}, {"zz<*>", {}}};

    ExpectSameGraphs(table, Request([&] { return random.Text("alz", 3) + "\xff"; }));
}

INSTANTIATE_TEST_SUITE_P(Names, TableIndexTest, ::testing::Values(1, 10, 31, 32, 33, 200));

} // namespace
