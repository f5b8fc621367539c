#include <cstdint>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <syslog.h>

#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"
#include "tests/support/graph_driver.h"
#include "tests/support/log_capture.h"

namespace {

using test_support::HandOutAll;
using test_support::Lines;
using test_support::LogCapture;
using Names = std::vector<std::string>;
using Rounds = std::vector<std::set<std::string>>;

static_assert(std::is_same_v<decltype(&ParseAndDepend::GetStartGraphWithErrApp),
                             std::uint32_t (ParseAndDepend::*)(const Names&, DependGraph&, Names&) const>);
static_assert(std::is_same_v<decltype(&ParseAndDepend::GetStartGraph),
                             std::uint32_t (ParseAndDepend::*)(const Names&, DependGraph&) const>);
static_assert(PARSE_ERR_GRAPH_CYCLE == 0xF10404);

class StartGraphTest : public ::testing::Test {
protected:
    void SetTable(const ParseAndDepend::DependsMap& table) { front_.SetApplicationDependsMap(table); }

    std::uint32_t Start(const Names& names)
    {
        return front_.GetStartGraphWithErrApp(names, graph_, errApps_);
    }

    // What the graph hands out round by round, up to the rounds without a name at the end.
    Rounds HandOut()
    {
        Rounds rounds = HandOutAll(graph_).rounds;
        while (!rounds.empty() && rounds.back().empty()) {
            rounds.pop_back();
        }
        log_.Take();
        return rounds;
    }

    static std::string NotFound(const std::string& name)
    {
        return "ParseAndDepend GetStartGraph " + name + " is not in applicationDependsMap_";
    }
    static std::string NotRequested(const std::string& name, const std::string& dependency)
    {
        return "ParseAndDepend GetStartGraph  " + name + " depend  " + dependency +
               " is not in startAppNames";
    }

    ParseAndDepend front_;
    DependGraph graph_;
    Names errApps_ = {"before"};
    LogCapture log_;
};

TEST_F(StartGraphTest, AnEmptyRequestGivesAnEmptyGraph)
{
    SetTable({{"a", {}}});
    graph_.Update({{"old", {}}});

    EXPECT_EQ(0U, Start({}));

    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Rounds(), HandOut());
    EXPECT_EQ(Names({"before"}), errApps_);
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(StartGraphTest, DependenciesStartFirst)
{
    SetTable({{"web", {"net", "log"}}, {"net", {"log"}}, {"log", {}}});

    EXPECT_EQ(0U, Start({"web", "log", "net"}));

    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_EQ(Rounds({{"log"}, {"net"}, {"web"}}), HandOut());
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Names({"before"}), errApps_);
}

TEST_F(StartGraphTest, ADependencyOutsideTheRequestBecomesAVertexWithAWarning)
{
    SetTable({{"a", {"b"}}, {"b", {}}});

    EXPECT_EQ(0U, Start({"a"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a", "b"), {}}}), log_.Take());
    EXPECT_EQ(Rounds({{"b"}, {"a"}}), HandOut());
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(StartGraphTest, TheDependenciesOfSuchAVertexAreNotFollowed)
{
    SetTable({{"a", {"b"}}, {"b", {"c"}}, {"c", {}}, {"d", {"b", "gone"}}});

    EXPECT_EQ(0U, Start({"a", "d"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a", "b"), {}},
                     {LOG_WARNING, NotRequested("d", "b"), {}},
                     {LOG_WARNING, NotRequested("d", "gone"), {}}}),
              log_.Take());
    EXPECT_EQ(Rounds({{"b", "gone"}, {"a", "d"}}), HandOut());
}

TEST_F(StartGraphTest, ANameThatIsNotInTheTableIsReportedAndTheRestBuilt)
{
    SetTable({{"a", {}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Start({"x", "a", "y"}));

    EXPECT_EQ(Lines({{LOG_ERR, NotFound("x"), {}}, {LOG_ERR, NotFound("y"), {}}}), log_.Take());
    EXPECT_EQ(Names({"before", "x", "y"}), errApps_);
    EXPECT_EQ(Rounds({{"a"}}), HandOut());
}

TEST_F(StartGraphTest, LinesComeInTheOrderOfTheRequest)
{
    SetTable({{"b", {"2", "1"}}, {"a", {"3"}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Start({"b", "x", "a"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("b", "1"), {}},
                     {LOG_WARNING, NotRequested("b", "2"), {}},
                     {LOG_ERR, NotFound("x"), {}},
                     {LOG_WARNING, NotRequested("a", "3"), {}}}),
              log_.Take());
}

TEST_F(StartGraphTest, ARequestedDependencyThatIsNotInTheTableIsNoVertexOfItsOwn)
{
    SetTable({{"a", {"b"}}});

    const std::uint32_t result = Start({"a", "b"});

    EXPECT_EQ(Names({"before", "b"}), errApps_);
    const Lines lines = log_.Take();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(Lines({{LOG_ERR, NotFound("b"), {}}}), Lines({lines[0]}));
    // Where the name falls in the graph's table decides whether the check takes this for a cycle.
    if (result == PARSE_ERR_GRAPH_CYCLE) {
        EXPECT_EQ(3U, lines.size());
        EXPECT_EQ(Rounds(), HandOut());
        return;
    }
    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, result);
    EXPECT_EQ(1U, lines.size());
    EXPECT_EQ(Rounds({{"b"}, {"a"}}), HandOut());
}

TEST_F(StartGraphTest, ANameRequestedTwiceIsOneVertex)
{
    SetTable({{"a", {"b"}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Start({"a", "x", "a", "x"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a", "b"), {}},
                     {LOG_ERR, NotFound("x"), {}},
                     {LOG_WARNING, NotRequested("a", "b"), {}},
                     {LOG_ERR, NotFound("x"), {}}}),
              log_.Take());
    EXPECT_EQ(Names({"before", "x", "x"}), errApps_);
    EXPECT_EQ(Rounds({{"b"}, {"a"}}), HandOut());
    EXPECT_TRUE(graph_.IsEmpty()); // two vertices, two pops
}

TEST_F(StartGraphTest, ACycleClearsTheGraph)
{
    SetTable({{"self", {"self"}}, {"a", {}}});

    EXPECT_EQ(PARSE_ERR_GRAPH_CYCLE, Start({"a", "self"}));

    EXPECT_EQ(Lines({{LOG_ERR, "The Graph has cycle. the cycle is :self ", {}},
                     {LOG_ERR, "ParseAndDepend GetStartGraph: the graph has cycle !", {}}}),
              log_.Take());
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Rounds(), HandOut());
    EXPECT_EQ(Names({"before"}), errApps_);
}

TEST_F(StartGraphTest, ACycleWinsOverAMissingName)
{
    SetTable({{"a", {"a"}}});

    EXPECT_EQ(PARSE_ERR_GRAPH_CYCLE, Start({"x", "a", "y"}));

    EXPECT_EQ(Names({"before", "x", "y"}), errApps_);
    EXPECT_EQ(Lines({{LOG_ERR, NotFound("x"), {}},
                     {LOG_ERR, NotFound("y"), {}},
                     {LOG_ERR, "The Graph has cycle. the cycle is :a ", {}},
                     {LOG_ERR, "ParseAndDepend GetStartGraph: the graph has cycle !", {}}}),
              log_.Take());
}

TEST_F(StartGraphTest, ACycleThatIsNotRequestedWholeIsNone)
{
    SetTable({{"a", {"b"}}, {"b", {"a"}}});

    EXPECT_EQ(0U, Start({"a"}));

    EXPECT_EQ(Rounds({{"b"}, {"a"}}), HandOut());
}

TEST_F(StartGraphTest, ANameTakesTheDependenciesOfThePatternThatItMatches)
{
    SetTable({{"svc_<1-3>", {"net"}}, {"net", {}}});

    EXPECT_EQ(0U, Start({"svc_2", "net", "svc_1"}));

    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_EQ(Rounds({{"net"}, {"svc_1", "svc_2"}}), HandOut());
}

TEST_F(StartGraphTest, RequestedNamesAreComparedExactlyWithDependencies)
{
    SetTable({{"a", {"svc_<1-3>"}}, {"svc_<1-3>", {}}});

    EXPECT_EQ(0U, Start({"a", "svc_1"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a", "svc_<1-3>"), {}}}), log_.Take());
    EXPECT_EQ(Rounds({{"svc_1", "svc_<1-3>"}, {"a"}}), HandOut());
}

TEST_F(StartGraphTest, LookUpsLogWhatTheMatchesLog)
{
    SetTable({{"svc_<1-x>", {}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Start({"svc_1"}));

    EXPECT_EQ(Lines({{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, x", {}},
                     {LOG_ERR, "ParseAndDepend CheckNumTypePara: GetIntervals fail, 1-x", {}},
                     {LOG_ERR, NotFound("svc_1"), {}}}),
              log_.Take());
}

TEST_F(StartGraphTest, AnEmptyNameIsNotFound)
{
    SetTable({{"abc", {}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Start({""}));

    EXPECT_EQ(
        Lines({{LOG_ERR, "ParseAndDepend IsDynamicParaMatch: dynamic para invalid, pattern=3, str=0", {}},
               {LOG_ERR, NotFound(""), {}}}),
        log_.Take());
    EXPECT_EQ(Names({"before", ""}), errApps_);
}

TEST_F(StartGraphTest, WithoutTheListOfMissingNamesAllElseIsTheSame)
{
    SetTable({{"a", {"b"}}, {"c", {"c"}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, front_.GetStartGraph({"a", "x"}, graph_));
    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a", "b"), {}}, {LOG_ERR, NotFound("x"), {}}}), log_.Take());
    EXPECT_EQ(Rounds({{"b"}, {"a"}}), HandOut());
    EXPECT_EQ(0U, front_.GetStartGraph({"a"}, graph_));
    EXPECT_EQ(PARSE_ERR_GRAPH_CYCLE, front_.GetStartGraph({"c"}, graph_));
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(StartGraphTest, TheTableIsLeftAsItIs)
{
    const ParseAndDepend::DependsMap table = {{"a", {"b", "c"}}, {"c", {"a"}}};
    SetTable(table);

    Start({"a", "x", "c"});

    EXPECT_EQ(table, front_.GetApplicationDependsMap());
}

} // namespace
