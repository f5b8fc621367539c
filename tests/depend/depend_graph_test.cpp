#include "startplan/depend_graph.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>
#include <syslog.h>

#include "tests/support/log_capture.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using Names = std::set<std::string>;

static_assert(std::is_default_constructible_v<DependGraph>);
static_assert(!std::is_copy_constructible_v<DependGraph> && !std::is_copy_assignable_v<DependGraph>);
static_assert(!std::is_move_constructible_v<DependGraph> && !std::is_move_assignable_v<DependGraph>);
static_assert(std::is_same_v<std::underlying_type_t<VertexState>, std::uint32_t>);
static_assert(static_cast<std::uint32_t>(VertexState::WAITING) == 0);
static_assert(static_cast<std::uint32_t>(VertexState::READY) == 1);
static_assert(static_cast<std::uint32_t>(VertexState::POPPED) == 2);
static_assert(std::is_same_v<decltype(VertexStatus::state), VertexState>);
static_assert(std::is_same_v<decltype(VertexStatus::depends), Names>);
// Each takes the lock, so none is const.
static_assert(std::is_same_v<decltype(&DependGraph::Update),
                             void (DependGraph::*)(const std::map<std::string, Names>&)>);
static_assert(std::is_same_v<decltype(&DependGraph::HasCycle), bool (DependGraph::*)()>);
static_assert(std::is_same_v<decltype(&DependGraph::GetNoDependVertices), Names (DependGraph::*)()>);
static_assert(std::is_same_v<decltype(&DependGraph::Pop), bool (DependGraph::*)(const std::string&)>);
static_assert(std::is_same_v<decltype(&DependGraph::IsEmpty), bool (DependGraph::*)()>);
static_assert(std::is_same_v<decltype(&DependGraph::Clear), void (DependGraph::*)()>);

class DependGraphTest : public ::testing::Test {
protected:
    // Of the names in `named`, in the order of a hash table that `all` were entered into in ascending
    // order, each followed by a blank.
    static std::string InTableOrder(const Names& all, const Names& named)
    {
        std::unordered_map<std::string, VertexStatus> table;
        for (const std::string& name : all) {
            table[name];
        }
        std::string text;
        for (const auto& entry : table) {
            text += named.count(entry.first) != 0 ? entry.first + " " : "";
        }
        return text;
    }

    static Lines CycleLine(const std::string& names)
    {
        return {{LOG_ERR, "The Graph has cycle. the cycle is :" + names, {}}};
    }

    void HandOutAndPop(const Names& expected)
    {
        EXPECT_EQ(expected, graph_.GetNoDependVertices());
        for (const std::string& name : expected) {
            EXPECT_TRUE(graph_.Pop(name)) << name;
        }
    }

    DependGraph graph_;
    LogCapture log_;
};

TEST_F(DependGraphTest, ANewGraphIsEmpty)
{
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_FALSE(graph_.HasCycle());
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependGraphTest, AnEmptyMapMakesAnEmptyGraph)
{
    graph_.Update({});

    EXPECT_FALSE(graph_.HasCycle());
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependGraphTest, AFilledGraphIsNotEmptyUntilEveryVertexIsPopped)
{
    graph_.Update({{"a", {"b"}}, {"b", {}}});
    EXPECT_FALSE(graph_.HasCycle());

    EXPECT_FALSE(graph_.IsEmpty());
    HandOutAndPop({"b"});
    EXPECT_FALSE(graph_.IsEmpty());
    HandOutAndPop({"a"});

    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Lines({{LOG_INFO, "DependGraph Pop: b", {}}, {LOG_INFO, "DependGraph Pop: a", {}}}),
              log_.Take());
}

TEST_F(DependGraphTest, AVertexIsHandedOutOnceAndItsDependantsOnlyAfterThePop)
{
    graph_.Update({{"a", {"b"}}, {"b", {}}});

    EXPECT_EQ(Names({"b"}), graph_.GetNoDependVertices());
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.Pop("b"));
    EXPECT_EQ(Names({"a"}), graph_.GetNoDependVertices());
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
}

TEST_F(DependGraphTest, AVertexWaitsForTheLastOfItsDependencies)
{
    graph_.Update({{"a", {"b", "c", "d"}}, {"b", {}}, {"c", {}}, {"d", {"c"}}});

    EXPECT_EQ(Names({"b", "c"}), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.Pop("c"));
    EXPECT_EQ(Names({"d"}), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.Pop("d"));
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.Pop("b"));
    EXPECT_EQ(Names({"a"}), graph_.GetNoDependVertices());
}

TEST_F(DependGraphTest, HandOutsAreInAscendingByteOrder)
{
    graph_.Update({{"b", {}}, {"B", {}}, {"a10", {}}, {"a9", {}}, {"\xc3\xa4", {}}, {"", {}}});

    const Names names = graph_.GetNoDependVertices();

    EXPECT_EQ(std::vector<std::string>({"", "B", "a10", "a9", "b", "\xc3\xa4"}),
              std::vector<std::string>(names.begin(), names.end()));
}

TEST_F(DependGraphTest, AVertexThatDependsOnItselfIsNamedAndNeverHandedOut)
{
    graph_.Update({{"a", {"a"}}});

    EXPECT_TRUE(graph_.HasCycle());

    EXPECT_EQ(CycleLine("a "), log_.Take());
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_FALSE(graph_.IsEmpty());
}

TEST_F(DependGraphTest, ACycleIsNamedWithAllThatDependOnItInTheTablesOrder)
{
    graph_.Update({{"a", {"b"}}, {"b", {"a"}}, {"c", {"a"}}});

    EXPECT_TRUE(graph_.HasCycle());

    EXPECT_EQ(CycleLine(InTableOrder({"a", "b", "c"}, {"a", "b", "c"})), log_.Take());
}

TEST_F(DependGraphTest, VerticesInFrontOfACycleAndBesideItAreNotNamed)
{
    graph_.Update({{"base", {}},
                   {"one", {"base", "two"}},
                   {"two", {"one"}},
                   {"behind", {"two"}},
                   {"beside", {"base"}}});
    const Names all = {"base", "one", "two", "behind", "beside"};

    EXPECT_TRUE(graph_.HasCycle());

    EXPECT_EQ(CycleLine(InTableOrder(all, {"one", "two", "behind"})), log_.Take());
    HandOutAndPop({"base"});
    HandOutAndPop({"beside"});
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
}

TEST_F(DependGraphTest, EveryCheckReportsTheCycleAnew)
{
    graph_.Update({{"a", {"a"}}});

    EXPECT_TRUE(graph_.HasCycle());
    EXPECT_TRUE(graph_.HasCycle());

    EXPECT_EQ(2U, log_.Take().size());
}

TEST_F(DependGraphTest, AnAcyclicGraphIsLeftWaitingByTheCheck)
{
    graph_.Update({{"a", {"b", "c"}}, {"b", {"c"}}, {"c", {}}});

    EXPECT_FALSE(graph_.HasCycle());

    EXPECT_EQ(Lines(), log_.Take());
    HandOutAndPop({"c"});
    HandOutAndPop({"b"});
    HandOutAndPop({"a"});
}

TEST_F(DependGraphTest, PopOfAVertexNeverHandedOutIsRefusedAndLogged)
{
    graph_.Update({{"web", {}}});

    EXPECT_FALSE(graph_.Pop("web"));

    EXPECT_EQ(Lines({{LOG_WARNING, "DependGraph Pop: web cannot found in graph", {}}}), log_.Take());
    EXPECT_FALSE(graph_.IsEmpty());
    HandOutAndPop({"web"});
}

TEST_F(DependGraphTest, PopOfAnUnknownNameIsRefusedAndAddsNoVertex)
{
    EXPECT_FALSE(graph_.Pop("web"));
    EXPECT_FALSE(graph_.Pop(""));

    EXPECT_EQ(Lines({{LOG_WARNING, "DependGraph Pop: web cannot found in graph", {}},
                     {LOG_WARNING, "DependGraph Pop:  cannot found in graph", {}}}),
              log_.Take());
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(DependGraphTest, ASecondPopIsRefusedAndNotCounted)
{
    graph_.Update({{"a", {}}, {"b", {}}});
    graph_.GetNoDependVertices();

    EXPECT_TRUE(graph_.Pop("a"));
    EXPECT_FALSE(graph_.Pop("a"));

    EXPECT_EQ(Lines({{LOG_INFO, "DependGraph Pop: a", {}},
                     {LOG_WARNING, "DependGraph Pop: a cannot found in graph", {}}}),
              log_.Take());
    EXPECT_FALSE(graph_.IsEmpty());
    EXPECT_TRUE(graph_.Pop("b"));
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(DependGraphTest, PercentSignsInNamesAreLoggedAsTheyAre)
{
    graph_.Update({{"%s%n", {"%s%n"}}});

    graph_.HasCycle();
    graph_.Pop("%d");

    EXPECT_EQ(Lines({{LOG_ERR, "The Graph has cycle. the cycle is :%s%n ", {}},
                     {LOG_WARNING, "DependGraph Pop: %d cannot found in graph", {}}}),
              log_.Take());
}

TEST_F(DependGraphTest, ANewUpdateStartsOver)
{
    graph_.Update({{"a", {}}, {"b", {}}, {"c", {"a"}}});
    graph_.GetNoDependVertices();
    graph_.Pop("a");

    graph_.Update({{"b", {}}, {"d", {"b"}}});

    EXPECT_FALSE(graph_.Pop("b")); // handed out before the update only
    EXPECT_FALSE(graph_.IsEmpty());
    HandOutAndPop({"b"});
    HandOutAndPop({"d"});
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(DependGraphTest, ClearMakesTheGraphAsNew)
{
    graph_.Update({{"a", {}}, {"b", {"a"}}});
    graph_.GetNoDependVertices();

    graph_.Clear();

    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_FALSE(graph_.Pop("a"));
    EXPECT_EQ(Names(), graph_.GetNoDependVertices());
    EXPECT_FALSE(graph_.HasCycle());
}

TEST_F(DependGraphTest, TheCallersMapIsCopied)
{
    std::map<std::string, Names> depends = {{"a", {"b"}}, {"b", {}}};
    graph_.Update(depends);

    depends.clear();

    HandOutAndPop({"b"});
    HandOutAndPop({"a"});
}

} // namespace
