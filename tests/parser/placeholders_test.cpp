// `${name}` in the path of a startup file.

#include <chrono>
#include <csignal>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "startplan/parser.h"
#include "tests/support/log_capture.h"
#include "tests/support/placeholder_model.h"

namespace {

using ReplaceData = std::map<std::string, std::string>;

std::string Replaced(std::string path, const ReplaceData& data)
{
    ProcMgr::YamlParser().ReplaceByMatchDataInPath(path, data);
    return path;
}

struct PathCase {
    const char* path;
    const char* replaced;
};

TEST(PlaceholdersTest, KnownNamesAreReplacedAndEverythingElseStays)
{
    const ReplaceData data = {{"ROOT", "/etc/app"}, {"A", "${B}"}, {"B", "b"}, {"E", ""}, {"$", "dollar"}};
    const PathCase cases[] = {
        {"${ROOT}/a.yaml", "/etc/app/a.yaml"},
        {"${ROOT}/${ROOT}.yaml", "/etc/app//etc/app.yaml"},
        {"${ROOT}${ROOT}", "/etc/app/etc/app"},
        {"/x/${B}", "/x/b"},
        {"${UNKNOWN}/x.yaml", "${UNKNOWN}/x.yaml"},
        {"${UNKNOWN}/${B}", "${UNKNOWN}/b"},
        {"${U}${B}${U}", "${U}b${U}"},
        {"${ROOT/x.yaml", "${ROOT/x.yaml"},
        {"${B}/${ROOT", "b/${ROOT"},
        {"}${B}", "}b"},
        {"${B}}", "b}"},
        {"${A}", "${B}"}, // a value is never expanded again
        {"${A}${A}", "${B}${B}"},
        {"${E}${B}", "b"},
        {"${E}{B}", "{B}"},
        {"$${E}{B}", "${B}"}, // nor is what a replacement puts together
        {"$${B}", "$b"},
        {"${$}", "dollar"},
        {"$B", "$B"},
        {"{B}", "{B}"},
        {"$ {B}", "$ {B}"},
        {"${ B}", "${ B}"},
        {"${b}", "${b}"},
        {"", ""},
        {"/plain/path.yaml", "/plain/path.yaml"},
    };
    for (const PathCase& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(Replaced(c.path, data), c.replaced);
    }
}

TEST(PlaceholdersTest, APlaceholderInsideAnUnknownOneIsPartOfItsName)
{
    // The outer name reaches to the first closing brace. Where it is unknown the search goes on as many
    // characters further as the name is long, and so past the inner "${".
    const ReplaceData data = {{"X", "x"}, {"A${K", "known"}};

    EXPECT_EQ(Replaced("${${X}}", data), "${${X}}");
    EXPECT_EQ(Replaced("${A${X}}", data), "${A${X}}");
    EXPECT_EQ(Replaced("${A${K}}", data), "known}");
    EXPECT_EQ(Replaced("${A${X}/${X}", data), "${A${X}/x");
}

TEST(PlaceholdersTest, ASearchThatRestartsInsideAnUnknownPlaceholderMayFindItsLastTwoCharacters)
{
    EXPECT_EQ(Replaced("${A${}", {{"", "E"}}), "${AE");
}

TEST(PlaceholdersTest, AnEmptyMapLeavesEveryPathAlone)
{
    for (const char* path : {"${ROOT}", "${}", "${}/${A}", "/a"}) {
        EXPECT_EQ(Replaced(path, {}), path);
    }
}

TEST(PlaceholdersTest, TheEmptyNameIsANameLikeAnyOther)
{
    EXPECT_EQ(Replaced("a${}b${}", {{"", "-"}}), "a-b-");
    EXPECT_EQ(Replaced("${}${}", {{"", ""}}), "");
    EXPECT_EQ(Replaced("${}", {{"", "${}"}}), "${}");
}

TEST(PlaceholdersTest, ReplacingLogsNothing)
{
    test_support::LogCapture log;

    Replaced("${ROOT}/${UNKNOWN}/${", {{"ROOT", "r"}});

    EXPECT_EQ(log.Take(), test_support::Lines());
}

TEST(PlaceholdersTest, APathOfManyPlaceholdersIsReplacedWhole)
{
    std::string path;
    std::string expected;
    for (int i = 0; i < 2000; ++i) {
        path += "${ROOT}/${U}/";
        expected += "/long/value/of/the/root/${U}/";
    }
    EXPECT_EQ(Replaced(path, {{"ROOT", "/long/value/of/the/root"}}), expected);
}

TEST(PlaceholdersTest, EveryPathOfUpToEightTellingCharactersAgreesWithThePlainModel)
{
    const std::vector<ReplaceData> maps = {
        {{"", "A"}, {"A", "${A}"}},           {{"", ""}, {"A", ""}, {"$", "{A}"}},
        {{"", "$"}, {"{", "$"}, {"AA", "}"}}, {{"A", "$"}},
        {{"AA", "{"}, {"${A", "A"}},
    };
    std::vector<std::string> paths = {""};
    for (std::size_t begin = 0; paths[begin].size() < 8; ++begin) {
        for (const char c : {'$', '{', '}', 'A'}) {
            paths.push_back(paths[begin] + c);
        }
    }
    for (const ReplaceData& data : maps) {
        for (const std::string& path : paths) {
            if (data.count("") == 0 && path.find("${}") != std::string::npos) {
                continue; // would not return
            }
            ASSERT_EQ(Replaced(path, data), test_support::ReplacedByTheModel(path, data)) << path;
        }
    }
}

// Runs the work in a process of its own; whether it ended by itself within this time. Kills it otherwise.
bool EndsWithin(std::chrono::milliseconds time, const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(5); // should the parent be gone
        work();
        _exit(0);
    }
    const auto deadline = std::chrono::steady_clock::now() + time;
    int status = 0;
    while (std::chrono::steady_clock::now() < deadline) {
        if (waitpid(child, &status, WNOHANG) == child) {
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    kill(child, SIGKILL);
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    return false;
}

TEST(PlaceholdersTest, AnEmptyPlaceholderWithoutAnEmptyNameInTheMapNeverReturns)
{
    EXPECT_TRUE(EndsWithin(std::chrono::seconds(4), [] { Replaced("/a/${}", {{"", "x"}, {"ROOT", "r"}}); }));
    EXPECT_FALSE(EndsWithin(std::chrono::seconds(1), [] { Replaced("/a/${}", {{"ROOT", "r"}}); }));
}

} // namespace
