#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <syslog.h>

#include "startplan/application_manifest.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_tree.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using test_support::TemporaryTree;
using Depends = std::set<std::string>;
using DependsMap = ParseAndDepend::DependsMap;
using Names = std::vector<std::string>;
using ReplaceData = std::map<std::string, std::string>;

static_assert(std::is_same_v<DependsMap, std::unordered_map<std::string, Depends>>);
static_assert(std::is_same_v<decltype(std::declval<const ParseAndDepend&>().GetApplicationDependsMap()),
                             const DependsMap&>);
static_assert(PARSE_ERR_CREATE_PARSER == 0xF10004 && PARSE_ERR_DEPEND_NOT_FOUND == 0xF10403);

// Applications of one file, in its order, each with what it depends on.
using Applications = std::vector<std::pair<std::string, Names>>;

class DependencyTableTest : public ::testing::Test {
protected:
    // Writes one startup file and a top-level file that names it; gives the latter's path.
    std::string Configure(const Applications& applications)
    {
        std::string text;
        for (const auto& [name, depends] : applications) {
            text += "\"" + name + "\":\n  bin_path: /bin/" + name + "\n  depends: [";
            for (const std::string& dependency : depends) {
                text += "\"" + dependency + "\",";
            }
            text += "]\n";
        }
        const std::string startup = tree_.Write("startup.yaml", text);
        return tree_.Write("top.yaml", "startup_path_list: [" + startup + "]\n");
    }

    std::uint32_t Parse(const Applications& applications)
    {
        return front_.ParseYaml(PARAM_TYPE_YAML, Configure(applications), apps_, {});
    }

    Names AppNames() const
    {
        Names names;
        for (const ApplicationManifest& app : apps_) {
            names.push_back(app.GetAppName());
        }
        return names;
    }

    // The front's own lines; the parser's progress lines are less urgent.
    Lines Warnings() { return log_.TakeUpTo(LOG_WARNING); }

    static Lines Covered(const Names& names)
    {
        Lines lines;
        for (const std::string& name : names) {
            lines.push_back(
                {LOG_WARNING,
                 "InitApplicationsAndDepend applicationDependsMap key: " + name + "  will be covered !",
                 {}});
        }
        return lines;
    }

    // The lines for missing dependencies as they follow from the table's order.
    static Lines Missing(const DependsMap& table, const Depends& missing)
    {
        Lines lines;
        for (const auto& [app, depends] : table) {
            for (const std::string& dependency : depends) {
                if (missing.count(dependency) != 0) {
                    lines.push_back({LOG_ERR,
                                     "CheckApplicationsAndDepend error: app: " + app +
                                         " depends: " + dependency + " not in appList",
                                     {}});
                }
            }
        }
        return lines;
    }

    const DependsMap& Table() const { return front_.GetApplicationDependsMap(); }

    TemporaryTree tree_;
    ParseAndDepend front_;
    std::vector<ApplicationManifest> apps_;
    LogCapture log_;
};

TEST_F(DependencyTableTest, ApplicationsEnterTheTableWithTheirDependencies)
{
    EXPECT_EQ(0U, Parse({{"web", {"net", "log"}}, {"net", {}}, {"log", {}}}));

    EXPECT_EQ(DependsMap({{"web", {"log", "net"}}, {"net", {}}, {"log", {}}}), Table());
    EXPECT_EQ(Names({"web", "net", "log"}), AppNames());
    EXPECT_EQ(Lines(), Warnings());
}

TEST_F(DependencyTableTest, AnUnknownKindOfParserIsRefused)
{
    Parse({{"a", {}}});
    log_.Take();

    EXPECT_EQ(PARSE_ERR_CREATE_PARSER, front_.ParseYaml(static_cast<ParamType>(2), "/x", apps_, {}));

    EXPECT_EQ(Lines({{LOG_ERR, "CreateParser failed parser is nullptr. paraType:2", {}}}), log_.Take());
    EXPECT_EQ(Names({"a"}), AppNames());
    EXPECT_EQ(DependsMap({{"a", {}}}), Table());
}

TEST_F(DependencyTableTest, TheNumberOfAnUnknownKindIsLoggedUnsigned)
{
    EXPECT_EQ(PARSE_ERR_CREATE_PARSER, front_.ParseYaml(static_cast<ParamType>(0xFFFFFFFF), "/x", apps_, {}));

    EXPECT_EQ(Lines({{LOG_ERR, "CreateParser failed parser is nullptr. paraType:4294967295", {}}}),
              log_.Take());
}

TEST_F(DependencyTableTest, AFailedParseEmptiesRecordsAndTable)
{
    Parse({{"a", {}}});
    log_.Take();

    EXPECT_EQ(PARSE_ERR_CFG_PATH, front_.ParseYaml(PARAM_TYPE_YAML, tree_.Path("none.yaml"), apps_, {}));

    const Lines lines = Warnings();
    ASSERT_EQ(2U, lines.size()); // the parser's own line is first
    EXPECT_EQ(Lines({{LOG_ERR, "InitApplicationsAndDepend ParseToApplication error", {}}}),
              Lines({lines[1]}));
    EXPECT_TRUE(apps_.empty());
    EXPECT_EQ(0U, apps_.capacity()); // the storage is released too
    EXPECT_TRUE(Table().empty());
}

TEST_F(DependencyTableTest, TheParsersOtherCodesArePassedThrough)
{
    const std::string top = tree_.Write("top.yaml", "{}");

    EXPECT_EQ(PARSE_ERR_NO_STARTUP_FILE, front_.ParseYaml(PARAM_TYPE_YAML, top, apps_, {}));

    const Lines lines = Warnings();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ("InitApplicationsAndDepend ParseToApplication error", lines.back().text);
}

TEST_F(DependencyTableTest, OfTwoApplicationsWithOneNameTheLaterDependenciesCountAndBothStay)
{
    EXPECT_EQ(0U, Parse({{"a", {"b"}}, {"b", {}}, {"a", {"a"}}}));

    EXPECT_EQ(Covered({"a"}), Warnings());
    EXPECT_EQ(DependsMap({{"a", {"a"}}, {"b", {}}}), Table());
    EXPECT_EQ(Names({"a", "b", "a"}), AppNames());
}

TEST_F(DependencyTableTest, OfTwoApplicationsWithOneNameOnlyTheLaterDependenciesAreChecked)
{
    EXPECT_EQ(0U, Parse({{"a", {"x"}}, {"b", {}}, {"a", {"b"}}}));

    EXPECT_EQ(Covered({"a"}), Warnings());
    EXPECT_EQ(DependsMap({{"a", {"b"}}, {"b", {}}}), Table());
    EXPECT_EQ(Names({"a", "b", "a"}), AppNames());
}

TEST_F(DependencyTableTest, AnApplicationThatDependsOnItselfPasses)
{
    EXPECT_EQ(0U, Parse({{"a", {"a"}}}));

    EXPECT_EQ(DependsMap({{"a", {"a"}}}), Table());
    EXPECT_EQ(Lines(), Warnings());
}

TEST_F(DependencyTableTest, TheCheckIsMadeOnceSoThatDependantsOfADroppedOneStay)
{
    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Parse({{"a", {"b"}}, {"b", {"c"}}}));

    EXPECT_EQ(Lines({{LOG_ERR, "CheckApplicationsAndDepend error: app: b depends: c not in appList", {}}}),
              Warnings());
    EXPECT_EQ(DependsMap({{"a", {"b"}}}), Table());
    EXPECT_EQ(Names({"a"}), AppNames());
}

TEST_F(DependencyTableTest, EachMissingDependencyIsLoggedAndTheApplicationRemovedOnce)
{
    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Parse({{"keep", {}}, {"a", {"y", "keep", "x"}}}));

    EXPECT_EQ(Lines({{LOG_ERR, "CheckApplicationsAndDepend error: app: a depends: x not in appList", {}},
                     {LOG_ERR, "CheckApplicationsAndDepend error: app: a depends: y not in appList", {}}}),
              Warnings());
    EXPECT_EQ(DependsMap({{"keep", {}}}), Table());
    EXPECT_EQ(Names({"keep"}), AppNames());
}

TEST_F(DependencyTableTest, EveryRecordOfADroppedNameGoesAndTheOthersKeepTheirOrder)
{
    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND,
              Parse({{"z", {}}, {"a", {}}, {"m", {}}, {"a", {"x"}}, {"b", {"x"}}, {"c", {"m"}}}));

    EXPECT_EQ(Names({"z", "m", "c"}), AppNames());
    EXPECT_EQ(DependsMap({{"z", {}}, {"m", {}}, {"c", {"m"}}}), Table());
}

TEST_F(DependencyTableTest, MissingDependenciesAreLoggedInTheTablesOrder)
{
    Applications applications;
    DependsMap table; // filled as the library's own: in the records' order
    for (int i = 0; i < 50; ++i) {
        const std::string name = "app" + std::to_string(i);
        applications.push_back({name, {"x", "app0", "w"}});
        table[name] = {"x", "app0", "w"};
    }

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Parse(applications));

    EXPECT_EQ(Missing(table, {"w", "x"}), Warnings());
    EXPECT_TRUE(apps_.empty());
    EXPECT_TRUE(Table().empty());
}

TEST_F(DependencyTableTest, PatternsAreKeysByTheirTextInTheCheck)
{
    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, Parse({{"svc_<1-3>", {}}, {"a", {"svc_<1-3>"}}, {"b", {"svc_1"}}}));

    EXPECT_EQ(
        Lines({{LOG_ERR, "CheckApplicationsAndDepend error: app: b depends: svc_1 not in appList", {}}}),
        Warnings());
    EXPECT_EQ(DependsMap({{"svc_<1-3>", {}}, {"a", {"svc_<1-3>"}}}), Table());
}

TEST_F(DependencyTableTest, ASecondParseAddsAndEntersTheEarlierRecordsAgain)
{
    EXPECT_EQ(0U, Parse({{"a", {}}, {"b", {}}}));

    EXPECT_EQ(0U, Parse({{"c", {"a"}}}));

    EXPECT_EQ(Covered({"a", "b"}), Warnings()); // they are in the vector still
    EXPECT_EQ(Names({"a", "b", "c"}), AppNames());
    EXPECT_EQ(DependsMap({{"a", {}}, {"b", {}}, {"c", {"a"}}}), Table());
}

TEST_F(DependencyTableTest, ASecondParseWithANewVectorKeepsTheTable)
{
    EXPECT_EQ(0U, Parse({{"a", {}}}));
    apps_.clear();

    EXPECT_EQ(0U, Parse({{"b", {"a"}}}));

    EXPECT_EQ(Lines(), Warnings());
    EXPECT_EQ(Names({"b"}), AppNames());
    EXPECT_EQ(DependsMap({{"a", {}}, {"b", {"a"}}}), Table());
}

TEST_F(DependencyTableTest, TheParserThatReadsNothingLeavesTheTableAsItIs)
{
    front_.SetApplicationDependsMap({{"a", {}}});

    EXPECT_EQ(0U, front_.ParseYaml(PARAM_TYPE_CFG, "/none", apps_, {}));

    EXPECT_EQ(DependsMap({{"a", {}}}), Table());
    EXPECT_TRUE(apps_.empty());
    EXPECT_EQ(Lines(), log_.Take());
}

TEST_F(DependencyTableTest, EachParseChecksTheWholeTable)
{
    front_.SetApplicationDependsMap({{"a", {"gone"}}, {"b", {"a"}}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, front_.ParseYaml(PARAM_TYPE_CFG, "/none", apps_, {}));
    EXPECT_EQ(Lines({{LOG_ERR, "CheckApplicationsAndDepend error: app: a depends: gone not in appList", {}}}),
              log_.Take());
    EXPECT_EQ(DependsMap({{"b", {"a"}}}), Table());

    // What the first call left incomplete is found by the second.
    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, front_.ParseYaml(PARAM_TYPE_CFG, "/none", apps_, {}));
    EXPECT_EQ(DependsMap(), Table());
    EXPECT_EQ(0U, front_.ParseYaml(PARAM_TYPE_CFG, "/none", apps_, {}));
}

TEST_F(DependencyTableTest, ReplaceDataIsReadThroughAParser)
{
    const std::string path = tree_.Write("replace.yaml", "cfgmgr_env: {ROOT: /etc/app, KEPT: new}\n");
    ReplaceData data = {{"KEPT", "old"}};

    EXPECT_EQ(0U, front_.ParseToReplaceData(PARAM_TYPE_YAML, path, data));

    EXPECT_EQ(ReplaceData({{"KEPT", "old"}, {"ROOT", "/etc/app"}}), data);
    EXPECT_EQ(Lines(), Warnings());
}

TEST_F(DependencyTableTest, ReplaceDataOfNoParserOrABadFileGivesTheCode)
{
    ReplaceData data = {{"KEPT", "old"}};

    EXPECT_EQ(PARSE_ERR_CREATE_PARSER, front_.ParseToReplaceData(static_cast<ParamType>(7), "/x", data));
    EXPECT_EQ(Lines({{LOG_ERR, "CreateParser failed parser is nullptr. paraType:7", {}}}), log_.Take());
    EXPECT_EQ(0U, front_.ParseToReplaceData(PARAM_TYPE_CFG, "/none", data));
    EXPECT_EQ(Lines(), log_.Take());
    EXPECT_EQ(PARSE_ERR_NO_STARTUP_FILE,
              front_.ParseToReplaceData(PARAM_TYPE_YAML, tree_.Write("list.yaml", "[a]\n"), data));

    EXPECT_EQ(ReplaceData({{"KEPT", "old"}}), data);
}

TEST_F(DependencyTableTest, ReplaceDataReachesThePathsOfStartupFiles)
{
    tree_.Write("startup.yaml", "a: {bin_path: /bin/a}\n");
    const std::string top = tree_.Write("top.yaml", "startup_path_list: [\"${ROOT}/startup.yaml\"]\n");

    EXPECT_EQ(0U, front_.ParseYaml(PARAM_TYPE_YAML, top, apps_, {{"ROOT", tree_.Path("")}}));

    EXPECT_EQ(Names({"a"}), AppNames());
}

TEST_F(DependencyTableTest, SettingTheTableReplacesItByACopy)
{
    Parse({{"a", {}}});
    DependsMap other = {{"x", {"y"}}};

    front_.SetApplicationDependsMap(other);
    other.clear();

    EXPECT_EQ(DependsMap({{"x", {"y"}}}), Table()); // unchecked: "y" is no key
    front_.SetApplicationDependsMap(Table());
    EXPECT_EQ(DependsMap({{"x", {"y"}}}), Table());
}

} // namespace
