// One startup file: the check of its path, what becomes of its entries, and its result. What an entry's keys
// mean is in entry_values_test, what it logs in entry_log_test.

#include <cerrno>
#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "startplan/parser.h"
#include "tests/support/file_calls.h"
#include "tests/support/log_capture.h"
#include "tests/support/startup_tree.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"

using test_support::Lines;
using test_support::Texts;

namespace {

class StartupFileTest : public test_support::StartupTreeFixture {
protected:
    bool Create(const std::string& content)
    {
        path_ = Write("apps.yaml", content);
        return parser_.CreateApplicationByStartupFile(path_, apps_);
    }

    test_support::LogLine LoadLine() const { return {LOG_INFO, "Load sub startup file=" + path_}; }
    test_support::LogLine InvalidLine() const { return {LOG_WARNING, path_ + " is invalid yaml file!"}; }

    std::string path_;
};

// Not a comparison of prefixes: a path passes by its first character, which only has to occur in one of
// "/etc/", "/ads/" and "/var/".
TEST_F(StartupFileTest, CheckInputPathAdmitsByTheFirstCharacterAlone)
{
    const std::string admitted = "/etcadsvr";
    for (int byte = 0; byte < 256; ++byte) {
        const char first = static_cast<char>(byte);
        const bool passes = admitted.find(first) != std::string::npos;
        SCOPED_TRACE(byte);

        EXPECT_EQ(parser_.CheckInputPath(std::string(1, first)), passes);
        EXPECT_EQ(parser_.CheckInputPath(first + std::string("home/x.yaml")), passes);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(StartupFileTest, CheckInputPathTable)
{
    struct Case {
        const char* path;
        bool passes;
    };
    for (const Case& c :
         {Case{"/etc/x.yaml", true}, Case{"/home/x.yaml", true}, Case{"/", true}, Case{"data.yaml", true},
          Case{"var/x", true}, Case{"x.yaml", false}, Case{"", false}, Case{".", false},
          Case{"./x.yaml", false}, Case{" /etc/x.yaml", false}, Case{"/a.b.c", true}, Case{"/a/./b", true}}) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(parser_.CheckInputPath(c.path), c.passes);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(StartupFileTest, CheckInputPathRefusesTwoDotsAnywhereWithAMessage)
{
    for (const std::string path : {"..", "../etc/x.yaml", "/etc/../x", "/etc/x..yaml", "/x..", "x...y"}) {
        SCOPED_TRACE(path);

        EXPECT_FALSE(parser_.CheckInputPath(path));

        const Lines lines = log_.Take();
        ASSERT_EQ(lines, Lines({{LOG_ERR, "CheckInputPath path=" + path + " failed, is not illegal path"}}));
        EXPECT_EQ(lines[0].format, "CheckInputPath path=%s failed, is not illegal path");
    }
}

TEST_F(StartupFileTest, APathThatFailsTheCheckIsNotOpened)
{
    EXPECT_FALSE(parser_.CreateApplicationByStartupFile("home.yaml", apps_));
    EXPECT_EQ(log_.Take(), Lines());

    const std::string path = Write("apps.yaml", "a: {bin_path: /a}\n") + "/../apps.yaml";
    EXPECT_FALSE(parser_.CreateApplicationByStartupFile(path, apps_));
    EXPECT_EQ(log_.Take(),
              Lines({{LOG_ERR, "CheckInputPath path=" + path + " failed, is not illegal path"}}));
    EXPECT_TRUE(apps_.empty());
}

TEST_F(StartupFileTest, AFileThatCannotBeLoadedIsFalseAndLeavesErrnoToTheCaller)
{
    const std::string path = Write("apps.yaml", "a: {bin_path: /a}\n");
    for (const int error : {EACCES, EMFILE}) {
        const test_support::FailingFopen failing(path, error);

        errno = 0;
        const bool created = parser_.CreateApplicationByStartupFile(path, apps_);
        const int after = errno;

        EXPECT_FALSE(created);
        EXPECT_EQ(after, error);
        EXPECT_EQ(log_.Take(), Lines({test_support::OpenFailed(path)}));
    }
    EXPECT_FALSE(parser_.CreateApplicationByStartupFile(tree_.Path("missing"), apps_));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(log_.Take(), Lines({test_support::FileNotFound(tree_.Path("missing"))}));
    EXPECT_FALSE(Create(""));
    EXPECT_EQ(log_.Take(), Lines({test_support::NoRoot(path_)}));
    EXPECT_TRUE(apps_.empty());
}

TEST_F(StartupFileTest, ARootThatIsNoMappingIsInvalidButNotAFailure)
{
    for (const char* content : {"[a, b]", "text", "''"}) {
        SCOPED_TRACE(content);

        EXPECT_TRUE(Create(content));

        EXPECT_TRUE(apps_.empty());
        const Lines lines = log_.Take();
        ASSERT_EQ(lines, Lines({test_support::ArrayIsNoMapping(), InvalidLine(), LoadLine()}));
        EXPECT_EQ(lines[1].format, "%s is invalid yaml file!");
        EXPECT_EQ(lines[2].format, "Load sub startup file=%s");
    }
}

TEST_F(StartupFileTest, AFileWithoutEntriesIsGood)
{
    EXPECT_TRUE(Create("{}"));

    EXPECT_TRUE(apps_.empty());
    EXPECT_EQ(log_.Take(), Lines({LoadLine()}));
}

TEST_F(StartupFileTest, ARootWithAMissingNodeKeepsTheEntriesBeforeIt)
{
    const test_support::MissingNodes missing("GONE");

    EXPECT_TRUE(Create("a: {bin_path: /a}\nb: {bin_path: /b}\nGONE: {bin_path: /c}\nd: {bin_path: /d}\n"));

    EXPECT_EQ(Names(), Texts({"a", "b"}));
    const Lines lines = log_.Take();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 3),
              Lines({test_support::MissingNodeInArray(), InvalidLine(), LoadLine()}));
}

TEST_F(StartupFileTest, AnIncompleteEntryIsSkippedAndTheOthersAreAppendedInOrder)
{
    EXPECT_FALSE(Create("c: {bin_path: /c}\nb: {uid: 5}\na: {bin_path: /a}\n"));

    EXPECT_EQ(Names(), Texts({"c", "a"}));
    const Lines lines = log_.TakeUpTo(LOG_WARNING);
    ASSERT_EQ(lines, Lines({{LOG_WARNING, "cfg isn't complete:appName=b, binPath=, uid=5"}}));
    EXPECT_EQ(lines[0].format, "cfg isn't complete:appName=%s, binPath=%s, uid=%u");
}

TEST_F(StartupFileTest, AnEntryIsIncompleteWithoutNameBinPathOrUid)
{
    struct Case {
        const char* content;
        const char* values;
    };
    for (const Case& c : {
             Case{"\"\": {bin_path: /a}", "appName=, binPath=/a, uid=1000"},
             Case{"? [a]\n: {bin_path: /a}", "appName=, binPath=/a, uid=1000"},
             Case{"\"\\0a\": {bin_path: /a}", "appName=, binPath=/a, uid=1000"},
             Case{"a: {}", "appName=a, binPath=, uid=1000"},
             Case{"a: {bin_path: }", "appName=a, binPath=, uid=1000"},
             Case{"a: {bin_path: [/a]}", "appName=a, binPath=, uid=1000"},
             Case{"a: {bin_path: , bin_path: /a}", "appName=a, binPath=, uid=1000"},
             Case{"a: {bin_path: /a, uid: -1}", "appName=a, binPath=/a, uid=4294967295"},
             Case{"\"\": {uid: -1}", "appName=, binPath=, uid=4294967295"},
         }) {
        SCOPED_TRACE(c.content);

        EXPECT_FALSE(Create(c.content));

        EXPECT_TRUE(apps_.empty());
        EXPECT_EQ(log_.TakeUpTo(LOG_WARNING),
                  Lines({{LOG_WARNING, std::string("cfg isn't complete:") + c.values}}));
    }
}

TEST_F(StartupFileTest, EntriesThatOnlyLookIncompleteAreAppended)
{
    EXPECT_TRUE(Create("a: {bin_path: ' '}\n"
                       "b: {bin_path: null, uid: 4294967295}\n" // read as a signed number, so the limit
                       "c: {bin_path: /c, gid: -1}\n"
                       "~: {bin_path: /d}\n"));

    ASSERT_EQ(Names(), Texts({"a", "b", "c", "~"}));
    EXPECT_EQ(apps_[0].GetBinPath(), " ");
    EXPECT_EQ(apps_[1].GetBinPath(), "null");
    EXPECT_EQ(apps_[1].GetUid(), 2147483647U);
    EXPECT_EQ(apps_[2].GetGid(), 4294967295U);
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines());
}

TEST_F(StartupFileTest, ARepeatedNameGivesARecordEachTime)
{
    EXPECT_TRUE(Create("a: {bin_path: /1}\na: {bin_path: /2}\n"));

    ASSERT_EQ(Names(), Texts({"a", "a"}));
    EXPECT_EQ(apps_[0].GetBinPath(), "/1");
    EXPECT_EQ(apps_[1].GetBinPath(), "/2");
}

TEST_F(StartupFileTest, AnEntryThatContainsItselfIsReadLikeAnyOther)
{
    EXPECT_TRUE(Create("a: &x {bin_path: /a, env: *x, depends: [*x, b], cgroup_path: *x}\n"));

    ASSERT_EQ(Names(), Texts({"a"}));
    EXPECT_EQ(apps_[0].GetEnvArgv(),
              (std::map<std::string, std::string>(
                  {{"bin_path", "/a"}, {"cgroup_path", ""}, {"depends", ""}, {"env", ""}})));
    EXPECT_EQ(apps_[0].GetDependList(), (std::set<std::string>({"", "b"})));
}

TEST_F(StartupFileTest, ManyEntriesComeInTheFilesOrder)
{
    std::string content;
    for (int i = 999; i >= 0; --i) {
        content += "app" + std::to_string(i) + ": {bin_path: /bin/" + std::to_string(i) + "}\n";
    }

    EXPECT_TRUE(Create(content));

    ASSERT_EQ(apps_.size(), 1000U);
    for (std::size_t i = 0; i < apps_.size(); ++i) {
        ASSERT_EQ(apps_[i].GetAppName(), "app" + std::to_string(999 - i));
        ASSERT_EQ(apps_[i].GetBinPath(), "/bin/" + std::to_string(999 - i));
    }
}

} // namespace
