// Files that access was denied to: what errno has to be, when it counts, and which result code wins.

#include <cerrno>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "startplan/result_codes.h"
#include "tests/support/accounts.h"
#include "tests/support/file_calls.h"
#include "tests/support/log_capture.h"
#include "tests/support/startup_tree.h"
#include "tests/support/yaml_lines.h"

using test_support::FailingFopen;
using test_support::FailingRealpath;
using test_support::FopenLeavingErrno;
using test_support::Lines;
using test_support::Texts;

namespace {

class StartupTreeDeniedTest : public test_support::StartupTreeFixture {
protected:
    void SetUp() override
    {
        WriteApps("a.yaml", {"a"});
        WriteApps("b.yaml", {"b"});
        errno = 0;
    }
};

TEST_F(StartupTreeDeniedTest, ASubStartupFileThatMayNotBeOpenedIsNamedAndTheWalkGoesOn)
{
    Write("s1.yaml", "startup_path_list: " + List({"a.yaml"}));
    Write("s2.yaml", "startup_path_list: " + List({"b.yaml"}));
    std::filesystem::create_symlink(tree_.Path("s1.yaml"), tree_.Path("link.yaml"));
    Write("top.yaml", "sub_startup: " + List({"link.yaml", "s2.yaml"}));
    const FailingFopen denied(tree_.Path("s1.yaml"), EACCES);

    EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);

    EXPECT_EQ(Names(), Texts({"b"}));
    const Lines lines = log_.TakeUpTo(LOG_WARNING);
    ASSERT_EQ(lines, Lines({test_support::OpenFailed(tree_.Path("s1.yaml")),
                            {LOG_ERR, "InitYamlNode " + tree_.Path("link.yaml") +
                                          " failed, errno=" + std::to_string(EACCES)}}));
    EXPECT_EQ(lines[1].format, "InitYamlNode %s failed, errno=%d");
}

TEST_F(StartupTreeDeniedTest, ASubStartupFileThatMayNotBeResolvedCountsTheSame)
{
    Write("top.yaml", "sub_startup: " + List({"s1.yaml"}) + "startup_path_list: " + List({"b.yaml"}));
    const FailingRealpath denied(tree_.Path("s1.yaml"), EACCES);

    EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);

    EXPECT_EQ(Names(), Texts({"b"}));
    const Lines lines = log_.Take();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0], test_support::FileNotFound(tree_.Path("s1.yaml")));
    EXPECT_EQ(lines[1].text, "InitYamlNode " + tree_.Path("s1.yaml") + " failed, errno=13");
    EXPECT_EQ(lines[1].priority, LOG_ERR);
}

TEST_F(StartupTreeDeniedTest, OtherReasonsAreNotTakenForADenialWhateverTheLogLeavesInErrno)
{
    Write("s1.yaml", "{}");
    Write("top.yaml", "sub_startup: " + List({"missing.yaml", "s1.yaml"}) +
                          "startup_path_list: " + List({"missing.yaml", "s1.yaml", "b.yaml"}));
    log_.OverwriteErrnoWith(EACCES);
    const FailingFopen failing(tree_.Path("s1.yaml"), EMFILE);

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"b"}));
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines({test_support::OpenFailed(tree_.Path("s1.yaml")),
                                                 test_support::OpenFailed(tree_.Path("s1.yaml"))}));
}

TEST_F(StartupTreeDeniedTest, AnIncompleteEntryIsNotTakenForADenialWhateverTheLogLeavesInErrno)
{
    Write("incomplete.yaml", "x: {uid: -1, restart: whenever}\ny: {uid: 1}\n");
    Write("top.yaml", "startup_path_list: " + List({"incomplete.yaml"}));
    log_.OverwriteErrnoWith(EACCES);

    EXPECT_EQ(Parse(), 0U);
}

TEST_F(StartupTreeDeniedTest, AStartupFileThatMayNotBeReadIsADenialAndTheOthersAreRead)
{
    Write("top.yaml", "startup_path_list: " + List({"a.yaml", "b.yaml", "missing.yaml"}));
    {
        const FailingFopen denied(tree_.Path("a.yaml"), EACCES);
        EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);
        EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines({test_support::OpenFailed(tree_.Path("a.yaml"))}));
    }
    {
        const FailingRealpath denied(tree_.Path("a.yaml"), EACCES);
        EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);
        EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines());
    }
    EXPECT_EQ(Names(), Texts({"b", "b"}));
}

TEST_F(StartupTreeDeniedTest, NothingToLoadReplacesADenial)
{
    Write("top.yaml", "startup_path_list: " + List({"a.yaml"}));
    const FailingFopen denied(tree_.Path("top.yaml"), EACCES);

    EXPECT_EQ(Parse(), PARSE_ERR_NO_STARTUP_FILE);

    EXPECT_EQ(log_.Take(), Lines({test_support::OpenFailed(tree_.Path("top.yaml")),
                                  {LOG_ERR, "InitYamlNode " + tree_.Path("top.yaml") + " failed, errno=13"},
                                  {LOG_ERR, "No startup file to load!"}}));
}

TEST_F(StartupTreeDeniedTest, TheLimitReplacesADenial)
{
    Write("s.yaml", "{}");
    Texts subs(199, "s.yaml");
    Write("top.yaml", "sub_startup: " + List(subs) + "startup_path_list: " + List({"a.yaml"}));
    const FailingFopen denied(tree_.Path("s.yaml"), EACCES);

    EXPECT_EQ(Parse(), PARSE_ERR_TOO_MANY_SUB_STARTUP);

    EXPECT_TRUE(apps_.empty());
    const Lines lines = log_.Take();
    ASSERT_EQ(lines.size(), 2 * subs.size() + 1); // the denied 200th is still named, then the limit
    EXPECT_EQ(lines[lines.size() - 2].text, "InitYamlNode " + tree_.Path("s.yaml") + " failed, errno=13");
    EXPECT_EQ(lines.back().text, "Load more than 200 sub startup files!");
}

TEST_F(StartupTreeDeniedTest, AnErrnoLeftByAnEarlierCallCountsForAFailureThatSetsNone)
{
    Write("broken.yaml", "a: [");
    struct Case {
        const char* why;
        std::string paths;
    };
    for (const Case& c :
         {Case{"a first character that no prefix has", "[home.yaml]"}, Case{"two dots", "[/a/../b.yaml]"}}) {
        SCOPED_TRACE(c.why);
        Write("top.yaml", "startup_path_list: " + c.paths);
        EXPECT_EQ(Parse(), 0U);

        const FopenLeavingErrno stale(tree_.Path("top.yaml"), EACCES);
        EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);
    }
}

TEST_F(StartupTreeDeniedTest, AnErrnoLeftByTheOpeningCountsForAFileThatIsNotYamlOrNotComplete)
{
    for (const char* content : {"a: [", "x: {}\n"}) {
        SCOPED_TRACE(content);
        Write("bad.yaml", content);
        Write("top.yaml", "startup_path_list: " + List({"bad.yaml"}));
        EXPECT_EQ(Parse(), 0U);

        const FopenLeavingErrno stale(tree_.Path("bad.yaml"), EACCES);
        EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);
    }
}

TEST_F(StartupTreeDeniedTest, AnErrnoLeftByTheOpeningCountsForASubStartupFileThatIsNotYaml)
{
    Write("bad.yaml", "a: [");
    Write("top.yaml", "sub_startup: " + List({"bad.yaml"}) + "startup_path_list: " + List({"a.yaml"}));
    const FopenLeavingErrno stale(tree_.Path("bad.yaml"), EACCES);

    EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);

    EXPECT_EQ(Names(), Texts({"a"}));
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING),
              Lines({test_support::NotYaml(tree_.Path("bad.yaml")),
                     {LOG_ERR, "InitYamlNode " + tree_.Path("bad.yaml") + " failed, errno=13"}}));
}

TEST_F(StartupTreeDeniedTest, AnErrnoLeftBehindDoesNotCountForAFileThatIsGood)
{
    Write("top.yaml", "startup_path_list: " + List({"a.yaml"}));
    const FopenLeavingErrno stale(tree_.Path("a.yaml"), EACCES);

    EXPECT_EQ(Parse(), 0U);

    EXPECT_EQ(Names(), Texts({"a"}));
}

TEST_F(StartupTreeDeniedTest, AnErrnoLeftByAnAccountLookUpCountsForAnIncompleteEntryOnly)
{
    test_support::Accounts accounts;
    accounts.LeaveErrno(EACCES);
    Write("good.yaml", "x: {bin_path: /x, user_name: nobody_known}\n");
    Write("top.yaml", "startup_path_list: " + List({"good.yaml"}));
    EXPECT_EQ(Parse(), 0U);

    Write("good.yaml", "x: {user_name: nobody_known}\n");
    EXPECT_EQ(Parse(), PARSE_ERR_NO_PERMISSION);
}

} // namespace
