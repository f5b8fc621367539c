// Names looked up in the dependency table.

#include <type_traits>
#include <utility>

#include <gtest/gtest.h>
#include <syslog.h>

#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using DependsMap = ParseAndDepend::DependsMap;

static_assert(
    std::is_same_v<decltype(std::declval<ParseAndDepend&>().GetAppFromDependsMap("")), DependsMap::iterator>);
static_assert(std::is_same_v<decltype(std::declval<const ParseAndDepend&>().GetAppFromDependsMap("")),
                             DependsMap::const_iterator>);

class DependencyLookupTest : public ::testing::Test {
protected:
    const DependsMap& Table() const { return front_.GetApplicationDependsMap(); }

    ParseAndDepend front_;
    LogCapture log_;
};

TEST_F(DependencyLookupTest, NothingIsFoundInAnEmptyTable)
{
    const ParseAndDepend& constFront = front_;

    EXPECT_EQ(Table().end(), constFront.GetAppFromDependsMap("a"));
    EXPECT_TRUE(front_.GetAppFromDependsMap("a") == Table().end());
    EXPECT_TRUE(front_.GetAppFromDependsMap("") == Table().end());
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependencyLookupTest, ANameIsFoundByTheFirstKeyInTheTablesOrderThatMatches)
{
    front_.SetApplicationDependsMap(
        {{"svc", {"1"}}, {"svc_a", {"2"}}, {"s", {"3"}}, {"svc_<*>", {"4"}}, {"other", {}}});

    const auto found = front_.GetAppFromDependsMap("svc_a");

    auto first = Table().begin();
    while (first->first == "other") {
        ++first;
    }
    ASSERT_NE(Table().end(), DependsMap::const_iterator(found));
    EXPECT_EQ(first->first, found->first);
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependencyLookupTest, ANameIsFoundByItsPatternOrByTheBeginningOfIt)
{
    front_.SetApplicationDependsMap({{"app_<1-3>", {"x"}}, {"web", {}}});

    EXPECT_EQ("app_<1-3>", front_.GetAppFromDependsMap("app_2")->first);
    EXPECT_EQ("web", front_.GetAppFromDependsMap("web_server")->first);
    EXPECT_TRUE(front_.GetAppFromDependsMap("app_4") == Table().end());
    EXPECT_TRUE(front_.GetAppFromDependsMap("we") == Table().end());
    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_TRUE(front_.GetAppFromDependsMap("app_<1-3>") == Table().end()); // a pattern is not its own name
    EXPECT_EQ(Lines({{LOG_ERR, "ParseAndDepend StrToUint32: dynamic para invalid, <1-3>", {}}}), log_.Take());
}

TEST_F(DependencyLookupTest, AConstTableFindsTheSameEntry)
{
    front_.SetApplicationDependsMap({{"app_<1-3>", {"x"}}, {"web", {}}, {"log", {}}, {"net", {}}});
    const ParseAndDepend& constFront = front_;

    for (const char* name : {"app_2", "web_server", "log", "network", "app_4", "we"}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(constFront.GetAppFromDependsMap(name) == front_.GetAppFromDependsMap(name));
    }

    EXPECT_EQ("app_<1-3>", constFront.GetAppFromDependsMap("app_2")->first);
    EXPECT_TRUE(constFront.GetAppFromDependsMap("app_4") == Table().end());
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependencyLookupTest, ANameOfAnImpossibleLengthIsLoggedForEachKey)
{
    front_.SetApplicationDependsMap({{"abc", {}}, {"xyz", {}}});

    EXPECT_TRUE(front_.GetAppFromDependsMap("") == Table().end());

    const Lines one = {
        {LOG_ERR, "ParseAndDepend IsDynamicParaMatch: dynamic para invalid, pattern=3, str=0", {}}};
    EXPECT_EQ(Lines({one[0], one[0]}), log_.Take());
}

TEST_F(DependencyLookupTest, TheEntryFoundMayBeChangedThroughANonConstObject)
{
    front_.SetApplicationDependsMap({{"a", {}}});

    front_.GetAppFromDependsMap("a")->second.insert("b");

    EXPECT_EQ(DependsMap({{"a", {"b"}}}), Table());
}

} // namespace
