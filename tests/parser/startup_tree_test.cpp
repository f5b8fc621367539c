// The walk over the top-level file and its sub-startup files: order, limit and result code.

#include <cerrno>
#include <cstdint>
#include <map>
#include <stack>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "tests/support/file_calls.h"
#include "tests/support/log_capture.h"
#include "tests/support/startup_tree.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using test_support::Lines;
using test_support::Load;
using test_support::MissingNodes;
using test_support::Texts;

namespace {

class StartupTreeTest : public test_support::StartupTreeFixture {
protected:
    // A top-level file that names the next file and so on, this many in all; the last names `startup`.
    void WriteChain(int files, const std::string& startup)
    {
        for (int i = 0; i < files; ++i) {
            const std::string name = i == 0 ? "top.yaml" : "f" + std::to_string(i) + ".yaml";
            const std::string next = "f" + std::to_string(i + 1) + ".yaml";
            Write(name,
                  i + 1 == files ? "startup_path_list: " + List({startup}) : "sub_startup: " + List({next}));
        }
    }
};

TEST_F(StartupTreeTest, StartupFilesAreReadInTheOrderOfTheirList)
{
    WriteApps("one.yaml", {"z", "b"});
    WriteApps("two.yaml", {"a"});
    Write("top.yaml", "startup_path_list: " + List({"two.yaml", "one.yaml", "two.yaml"}));

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"a", "z", "b", "a"}));
}

TEST_F(StartupTreeTest, TheWalkIsDepthFirstInTheFilesOrder)
{
    for (const char* name : {"a", "b", "c", "d"}) {
        WriteApps(std::string(name) + ".yaml", {name});
    }
    Write("top.yaml",
          "sub_startup: " + List({"s1.yaml", "s2.yaml"}) + "startup_path_list: " + List({"a.yaml"}));
    Write("s1.yaml", "startup_path_list: " + List({"b.yaml"}) + "sub_startup: " + List({"s3.yaml"}));
    Write("s3.yaml", "startup_path_list: " + List({"c.yaml"}));
    Write("s2.yaml", "startup_path_list: " + List({"d.yaml"}));

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"a", "b", "c", "d"}));
}

TEST_F(StartupTreeTest, TheWholeTreeIsWalkedBeforeTheFirstStartupFileIsRead)
{
    WriteApps("a.yaml", {});
    Write("top.yaml", "startup_path_list: " + List({"a.yaml"}) + "sub_startup: " + List({"missing.yaml"}));

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(log_.Take(), Lines({test_support::FileNotFound(tree_.Path("missing.yaml")),
                                  {LOG_INFO, "Load sub startup file=" + tree_.Path("a.yaml")}}));
}

TEST_F(StartupTreeTest, RecordsAreAppendedBehindThoseTheCallerHas)
{
    apps_.push_back(test_support::ManifestValues().Build());
    WriteApps("a.yaml", {"a"});
    Write("top.yaml", "startup_path_list: " + List({"a.yaml"}));

    EXPECT_EQ(Parse(), 0U);
    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"app", "a", "a"}));
}

TEST_F(StartupTreeTest, SubStartupFilesThatCannotBeLoadedAreSkippedAndTheResultStaysZero)
{
    WriteApps("a.yaml", {"a"});
    Write("broken.yaml", "a: [");
    Write("empty.yaml", "");
    Write("s.yaml", "startup_path_list: " + List({"a.yaml"}));
    Write("top.yaml", "sub_startup: " + List({"missing.yaml", "broken.yaml", "empty.yaml", ".", "s.yaml"}));

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"a"}));
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING),
              Lines({test_support::NotYaml(tree_.Path("broken.yaml")),
                     test_support::NoRoot(tree_.Path("empty.yaml")), test_support::NotYaml(Root())}));
}

TEST_F(StartupTreeTest, StartupFilesThatCannotBeReadLeaveTheResultAtZero)
{
    WriteApps("a.yaml", {"a"});
    Write("broken.yaml", "a: [");
    Write("incomplete.yaml", "x: {}\n");
    Write("top.yaml", "startup_path_list: [home.yaml, /a/../b, " + tree_.Path("missing.yaml") + ", " +
                          tree_.Path("broken.yaml") + ", " + tree_.Path("incomplete.yaml") + ", " +
                          tree_.Path("a.yaml") + "]\n");

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"a"}));
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING),
              Lines({{LOG_ERR, "CheckInputPath path=/a/../b failed, is not illegal path"},
                     test_support::NotYaml(tree_.Path("broken.yaml")),
                     {LOG_WARNING, "cfg isn't complete:appName=x, binPath=, uid=1000"}}));
}

TEST_F(StartupTreeTest, WithoutAStartupFileThereIsNothingToLoad)
{
    for (const char* content :
         {"other: 1\n", "{}", "startup_path_list: []\nsub_startup: []\n",
          "startup_path_list: one.yaml\nsub_startup: {a: b}\n", "startup_path_list:\nsub_startup:\n"}) {
        SCOPED_TRACE(content);
        Write("top.yaml", content);

        EXPECT_EQ(Parse(), PARSE_ERR_NO_STARTUP_FILE);

        EXPECT_EQ(log_.Take(), Lines({{LOG_ERR, "No startup file to load!"}}));
    }
    EXPECT_TRUE(apps_.empty());
}

TEST_F(StartupTreeTest, ATopLevelFileThatIsNoMappingIsWarnedOfForEachKey)
{
    for (const char* content : {"[a, b]", "text"}) {
        Write("top.yaml", content);

        EXPECT_EQ(Parse(), PARSE_ERR_NO_STARTUP_FILE);

        EXPECT_EQ(log_.Take(), Lines({test_support::NoMappingFor("startup_path_list"),
                                      test_support::NoMappingFor("sub_startup"),
                                      {LOG_ERR, "No startup file to load!"}}));
    }
}

TEST_F(StartupTreeTest, ATopLevelFileThatIsNotYamlLeavesNothingToLoad)
{
    Write("top.yaml", "a: [");

    EXPECT_EQ(Parse(), PARSE_ERR_NO_STARTUP_FILE);

    EXPECT_EQ(log_.Take(),
              Lines({test_support::NotYaml(tree_.Path("top.yaml")), {LOG_ERR, "No startup file to load!"}}));
}

TEST_F(StartupTreeTest, ATopLevelPathThatCannotBeExaminedIsAPathErrorWithErrno)
{
    Write("top.yaml", "startup_path_list: []\n");
    for (const int error : {EACCES, ENOTDIR, ELOOP}) {
        const test_support::FailingStat failing(tree_.Path("top.yaml"), error);

        EXPECT_EQ(Parse(), PARSE_ERR_CFG_PATH);

        EXPECT_EQ(log_.Take(), Lines({{LOG_ERR, "load cfg=" + tree_.Path("top.yaml") +
                                                    " failed. errno=" + std::to_string(error)}}));
    }
    for (const std::string& path : {tree_.Path("missing.yaml"), std::string()}) {
        EXPECT_EQ(parser_.ParseToApplication(path, apps_, {}), PARSE_ERR_CFG_PATH);

        const Lines lines = log_.Take();
        ASSERT_EQ(lines, Lines({{LOG_ERR, "load cfg=" + path + " failed. errno=" + std::to_string(ENOENT)}}));
        EXPECT_EQ(lines[0].format, "load cfg=%s failed. errno=%d");
    }
}

TEST_F(StartupTreeTest, ATopLevelPathThatNamesAFolderIsAPathErrorAndNothingIsRead)
{
    EXPECT_EQ(parser_.ParseToApplication(Root(), apps_, {}), PARSE_ERR_CFG_PATH);

    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_ERR, Root() + " is a directory."}}));
    EXPECT_EQ(lines[0].format, "%s is a directory.");
}

TEST_F(StartupTreeTest, TheTopLevelPathItselfMayHoldTwoDotsAndAnyEnding)
{
    WriteApps("a.yaml", {"a"});
    Write("dir/top.txt", "startup_path_list: " + List({"a.yaml"}));

    EXPECT_EQ(parser_.ParseToApplication(tree_.Path("dir/../dir/top.txt"), apps_, {}), 0U);

    EXPECT_EQ(Names(), Texts({"a"}));
}

TEST_F(StartupTreeTest, ATreeMayHave199Files)
{
    WriteApps("a.yaml", {"a"});
    WriteChain(199, "a.yaml");

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"a"}));
}

TEST_F(StartupTreeTest, The200thFileEndsTheWalkEvenWhenItIsTheLast)
{
    WriteApps("a.yaml", {"a"});
    WriteChain(200, "a.yaml");

    EXPECT_EQ(Parse(), PARSE_ERR_TOO_MANY_SUB_STARTUP);

    EXPECT_TRUE(apps_.empty());
    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_ERR, "Load more than 200 sub startup files!"}}));
    EXPECT_EQ(lines[0].format, "Load more than %u sub startup files!");
}

TEST_F(StartupTreeTest, RepeatedAndMissingFilesCountEachTime)
{
    WriteApps("a.yaml", {"a"});
    Write("s.yaml", "startup_path_list: " + List({"a.yaml"}));
    Texts subs(100, "s.yaml");
    subs.resize(198, "missing.yaml");
    Write("top.yaml", "sub_startup: " + List(subs));

    EXPECT_EQ(Parse(), 0U);
    EXPECT_EQ(apps_.size(), 100U);

    subs.emplace_back("missing.yaml");
    Write("top.yaml", "sub_startup: " + List(subs));

    EXPECT_EQ(Parse(), PARSE_ERR_TOO_MANY_SUB_STARTUP);
    EXPECT_EQ(apps_.size(), 100U);
}

TEST_F(StartupTreeTest, AFileThatNamesItselfEndsAtTheLimitWithTheRecordsUntouched)
{
    apps_.push_back(test_support::ManifestValues().Build());
    WriteApps("a.yaml", {"a"});
    Write("s.yaml", "startup_path_list: " + List({"a.yaml"}) + "sub_startup: " + List({"s.yaml"}));
    Write("top.yaml", "sub_startup: " + List({"s.yaml"}));

    EXPECT_EQ(Parse(), PARSE_ERR_TOO_MANY_SUB_STARTUP);

    EXPECT_EQ(Names(), Texts({"app"}));
    EXPECT_EQ(log_.Take(), Lines({{LOG_ERR, "Load more than 200 sub startup files!"}}));
}

TEST_F(StartupTreeTest, PlaceholdersAreReplacedInStartupPathsAndNotInSubStartupPaths)
{
    WriteApps("a.yaml", {"a"});
    Write("s.yaml", "startup_path_list: ['${ROOT}/a.yaml', '${UNKNOWN}/a.yaml']\n");
    Write("top.yaml", "startup_path_list: ['${ROOT}/a.yaml']\n"
                      "sub_startup: ['${ROOT}/s.yaml', '" +
                          tree_.Path("s.yaml") + "']\n");

    EXPECT_EQ(Parse({{"ROOT", Root()}}), 0U);

    EXPECT_EQ(Names(), Texts({"a", "a"}));
    EXPECT_EQ(apps_[0].GetCfgPath(), Root() + "/a.yaml");
    EXPECT_EQ(log_.Take()[0], test_support::FileNotFound("${ROOT}/s.yaml"));
}

TEST_F(StartupTreeTest, StartupPathsAreAppendedAsWritten)
{
    Texts list = {"before"};

    parser_.AddToStartupPathList(Load("{startup_path_list: [b, '', ' a ', b, [x], ../c]}"), list);
    parser_.AddToStartupPathList(Load("{sub_startup: [x]}"), list);
    parser_.AddToStartupPathList(Load("{startup_path_list: scalar}"), list);

    EXPECT_EQ(list, Texts({"before", "b", "", " a ", "b", "", "../c"}));
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(StartupTreeTest, SubStartupPathsAreStackedSoThatTheFirstIsOnTop)
{
    std::stack<std::string> stack;
    stack.push("before");

    parser_.AddToSubStatupFileQueue(Load("{sub_startup: [first, second, '']}"), stack);
    parser_.AddToSubStatupFileQueue(Load("{startup_path_list: [x]}"), stack);
    parser_.AddToSubStatupFileQueue(Load("{sub_startup: scalar}"), stack);

    Texts popped;
    for (; !stack.empty(); stack.pop()) {
        popped.push_back(stack.top());
    }
    EXPECT_EQ(popped, Texts({"first", "second", "", "before"}));
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(StartupTreeTest, AMissingNodeHidesTheListOrItsKey)
{
    const MissingNodes missing("GONE");
    Texts list = {"before"};
    std::stack<std::string> stack;

    parser_.AddToStartupPathList(Load("{startup_path_list: [a, GONE]}"), list);
    parser_.AddToSubStatupFileQueue(Load("{sub_startup: [a, GONE]}"), stack);
    parser_.AddToStartupPathList(Load("{GONE: 1, startup_path_list: [a]}"), list);
    parser_.AddToSubStatupFileQueue(Load("{GONE: 1, sub_startup: [a]}"), stack);

    EXPECT_EQ(list, Texts({"before"}));
    EXPECT_TRUE(stack.empty());
    EXPECT_EQ(log_.Take(), Lines({test_support::MissingStringItem(), test_support::MissingStringItem(),
                                  test_support::MissingNodeBefore("startup_path_list"),
                                  test_support::MissingNodeBefore("sub_startup")}));
}

} // namespace
