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

static_assert(std::is_same_v<decltype(&ParseAndDepend::GetTermGraphWithErrApp),
                             std::uint32_t (ParseAndDepend::*)(const Names&, DependGraph&, Names&) const>);
static_assert(std::is_same_v<decltype(&ParseAndDepend::GetTermGraph),
                             std::uint32_t (ParseAndDepend::*)(const Names&, DependGraph&) const>);

class TermGraphTest : public ::testing::Test {
protected:
    void SetTable(const ParseAndDepend::DependsMap& table) { front_.SetApplicationDependsMap(table); }

    std::uint32_t Term(const Names& names) { return front_.GetTermGraphWithErrApp(names, graph_, errApps_); }

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
        return "ParseAndDepend GetTermGraph " + name + " is not in applicationDependsMap_";
    }
    static std::string NotRequested(const std::string& name)
    {
        return "ParseAndDepend GetTermGraph " + name + " is not in termAppNames";
    }

    ParseAndDepend front_;
    DependGraph graph_;
    Names errApps_ = {"before"};
    LogCapture log_;
};

TEST_F(TermGraphTest, AnEmptyRequestGivesAnEmptyGraph)
{
    SetTable({{"a", {}}});
    graph_.Update({{"old", {}}});

    EXPECT_EQ(0U, Term({}));

    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Rounds(), HandOut());
    EXPECT_EQ(Names({"before"}), errApps_);
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(TermGraphTest, DependantsStopFirst)
{
    SetTable({{"a", {"b"}}, {"b", {}}});

    EXPECT_EQ(0U, Term({"a", "b"}));

    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_EQ(Rounds({{"a"}, {"b"}}), HandOut());
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Names({"before"}), errApps_);
}

TEST_F(TermGraphTest, AnApplicationWaitsForAllOfItsDependants)
{
    SetTable({{"web", {"net", "log"}}, {"net", {"log"}}, {"log", {}}, {"mail", {"net"}}});

    EXPECT_EQ(0U, Term({"log", "net", "web", "mail"}));

    EXPECT_EQ(Rounds({{"mail", "web"}, {"net"}, {"log"}}), HandOut());
}

TEST_F(TermGraphTest, ADependantOutsideTheRequestIsIgnoredWithAWarning)
{
    SetTable({{"a", {"b"}}, {"b", {}}});

    EXPECT_EQ(0U, Term({"b"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a"), {}}}), log_.Take());
    EXPECT_EQ(Rounds({{"b"}}), HandOut());
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(TermGraphTest, TheWarningIsRepeatedForEachNameThatTheDependantDependsOn)
{
    SetTable({{"a", {"b", "c"}}, {"b", {}}, {"c", {}}});

    EXPECT_EQ(0U, Term({"c", "b"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a"), {}}, {LOG_WARNING, NotRequested("a"), {}}}),
              log_.Take());
    EXPECT_EQ(Rounds({{"b", "c"}}), HandOut());
}

TEST_F(TermGraphTest, WarningsForOneNameComeInTheTablesOrder)
{
    ParseAndDepend::DependsMap table = {{"base", {}}};
    for (int i = 0; i < 30; ++i) {
        table["app" + std::to_string(i)] = {"base"};
    }
    SetTable(table);
    Lines expected;
    for (const auto& entry : front_.GetApplicationDependsMap()) {
        if (entry.first != "base") {
            expected.push_back({LOG_WARNING, NotRequested(entry.first), {}});
        }
    }

    EXPECT_EQ(0U, Term({"base"}));

    EXPECT_EQ(expected, log_.Take());
}

TEST_F(TermGraphTest, DependenciesOfANameAreNotFollowed)
{
    SetTable({{"a", {"b"}}, {"b", {}}});

    EXPECT_EQ(0U, Term({"a"}));

    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_EQ(Rounds({{"a"}}), HandOut());
}

TEST_F(TermGraphTest, ANameThatIsNotInTheTableIsReportedAndTheRestBuilt)
{
    SetTable({{"a", {"x"}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Term({"x", "a", "y"}));

    EXPECT_EQ(Lines({{LOG_ERR, NotFound("x"), {}}, {LOG_ERR, NotFound("y"), {}}}), log_.Take());
    EXPECT_EQ(Names({"before", "x", "y"}), errApps_);
    EXPECT_EQ(Rounds({{"a"}}), HandOut());
}

TEST_F(TermGraphTest, ANameRequestedTwiceIsOneVertex)
{
    SetTable({{"a", {"b"}}, {"b", {}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Term({"b", "x", "b", "x"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a"), {}},
                     {LOG_ERR, NotFound("x"), {}},
                     {LOG_WARNING, NotRequested("a"), {}},
                     {LOG_ERR, NotFound("x"), {}}}),
              log_.Take());
    EXPECT_EQ(Names({"before", "x", "x"}), errApps_);
    EXPECT_EQ(Rounds({{"b"}}), HandOut());
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(TermGraphTest, ACycleClearsTheGraph)
{
    SetTable({{"self", {"self"}}, {"a", {}}});

    EXPECT_EQ(PARSE_ERR_GRAPH_CYCLE, Term({"a", "self"}));

    EXPECT_EQ(Lines({{LOG_ERR, "The Graph has cycle. the cycle is :self ", {}},
                     {LOG_ERR, "ParseAndDepend GetTermGraph: the graph has cycle !", {}}}),
              log_.Take());
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(Rounds(), HandOut());
}

TEST_F(TermGraphTest, ACycleWinsOverAMissingName)
{
    SetTable({{"a", {"a"}}});

    EXPECT_EQ(PARSE_ERR_GRAPH_CYCLE, Term({"x", "a", "y"}));

    EXPECT_EQ(Names({"before", "x", "y"}), errApps_);
}

TEST_F(TermGraphTest, ANameThatMatchesAPatternIsAVertexWithoutThePatternsDependants)
{
    SetTable({{"svc_<1-3>", {}}, {"a", {"svc_<1-3>"}}, {"b", {"svc_1"}}});

    EXPECT_EQ(0U, Term({"svc_1", "a", "b"}));

    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_EQ(Rounds({{"a", "b"}, {"svc_1"}}), HandOut()); // "b" names it literally, "a" does not
}

TEST_F(TermGraphTest, ADependantThatIsAPatternIsComparedAsWritten)
{
    SetTable({{"net", {}}, {"svc_<1-3>", {"net"}}});

    EXPECT_EQ(0U, Term({"net", "svc_1"}));

    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("svc_<1-3>"), {}}}), log_.Take());
    EXPECT_EQ(Rounds({{"net", "svc_1"}}), HandOut());
}

TEST_F(TermGraphTest, ADependantThatIsRequestedByAMatchOnlyIsAVertexAllTheSame)
{
    // "web_2" is found by the key "web"; the dependant "web" is requested itself.
    SetTable({{"web", {"net"}}, {"net", {}}});

    EXPECT_EQ(0U, Term({"net", "web", "web_2"}));

    EXPECT_EQ(Rounds({{"web", "web_2"}, {"net"}}), HandOut());
}

TEST_F(TermGraphTest, LookUpsLogWhatTheMatchesLogBeforeTheRestOfTheName)
{
    SetTable({{"svc_<1-3>", {"svc_x"}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Term({"svc_x"}));

    EXPECT_EQ(Lines({{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, x", {}},
                     {LOG_ERR, NotFound("svc_x"), {}}}),
              log_.Take());
}

TEST_F(TermGraphTest, WithoutTheListOfMissingNamesAllElseIsTheSame)
{
    SetTable({{"a", {"b"}}, {"b", {}}, {"c", {"c"}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, front_.GetTermGraph({"b", "x"}, graph_));
    EXPECT_EQ(Lines({{LOG_WARNING, NotRequested("a"), {}}, {LOG_ERR, NotFound("x"), {}}}), log_.Take());
    EXPECT_EQ(Rounds({{"b"}}), HandOut());
    EXPECT_EQ(0U, front_.GetTermGraph({"a", "b"}, graph_));
    EXPECT_EQ(Rounds({{"a"}, {"b"}}), HandOut());
    EXPECT_EQ(PARSE_ERR_GRAPH_CYCLE, front_.GetTermGraph({"c"}, graph_));
    EXPECT_TRUE(graph_.IsEmpty());
}

TEST_F(TermGraphTest, TheTableIsLeftAsItIs)
{
    const ParseAndDepend::DependsMap table = {{"a", {"b", "c"}}, {"c", {"a"}}};
    SetTable(table);

    Term({"a", "x", "c"});

    EXPECT_EQ(table, front_.GetApplicationDependsMap());
}

} // namespace
