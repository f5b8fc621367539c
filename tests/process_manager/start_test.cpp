// Programs start in the order of their dependencies, with what their entries say.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <set>

#include <fcntl.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include "tests/process_manager/manager_test.h"

namespace process_manager_test {
namespace {

class StartTest : public ManagerTest {
protected:
    void ExpectDescribed(const std::string& line) const
    {
        EXPECT_EQ(Count(line), 1) << line << " is not in the trace";
    }

    static std::set<int> OpenDescriptorsOf(pid_t process)
    {
        std::set<int> open;
        for (const auto& entry :
             std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd")) {
            open.insert(std::stoi(entry.path().filename()));
        }
        return open;
    }
};

TEST_F(StartTest, WhatIsNeededIsReadyBeforeWhatNeedsItStarts)
{
    Add("top", {"left", "right"}, {"ready"});
    Add("left", {"base"}, {"ready"});
    Add("right", {"base"}, {"sleep=100", "ready"});
    Add("base", {}, {"sleep=100", "ready"});
    Run({"--all"});

    WaitForTrace("ready top");

    ExpectOrder("ready base", "start left");
    ExpectOrder("ready base", "start right");
    ExpectOrder("ready left", "start top");
    ExpectOrder("ready right", "start top");
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, WhatIsNeededIsStartedWithoutBeingNamedHoweverFarBelow)
{
    Add("a", {"b"}, {"ready"});
    Add("b", {"c"}, {"ready"});
    Add("c", {"d"}, {"ready"});
    Add("d", {}, {"ready"});
    Add("unasked");
    Run({"--start", "a"});

    WaitForTrace("ready a");

    EXPECT_EQ(EndOnceStarted(), 0);
    ExpectOrder("ready d", "start c");
    ExpectOrder("ready c", "start b");
    ExpectOrder("ready b", "start a");
    EXPECT_EQ(Count("start unasked"), 0);
}

TEST_F(StartTest, ProgramsThatDoNotNeedEachOtherStartTogether)
{
    const Texts names{"one", "two", "three"};
    for (const std::string& name : names) {
        Add(name, {}, {"sleep=500", "ready"});
    }
    Run({"--all"});

    for (const std::string& name : names) {
        WaitForTrace("ready " + name);
    }

    for (const std::string& started : names) {
        for (const std::string& ready : names) {
            ExpectOrder("start " + started, "ready " + ready);
        }
    }
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, AStartWithoutReportingIsCompleteOnceTheProgramHasBeenExecuted)
{
    Add("silent");
    Add("above", {"silent"}, {"ready"});
    Run({"--all"});

    WaitForTrace("ready above");
    WaitForTrace("start silent");

    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, AProgramGetsArgumentsAndEnvironmentOfItsEntry)
{
    setenv("FROM_OUTSIDE", "kept", 1);
    setenv("FROM_BOTH", "outside", 1);
    Add("app", {}, {"describe", "two words", "", "ready"}, "env: {FROM_BOTH: entry, FROM_ENTRY: \"a=b c\"}");
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    Run({"--all"});

    WaitForTrace("ready app");

    ExpectDescribed("app argument " TRACED_PROGRAM);
    ExpectDescribed("app argument two words");
    ExpectDescribed("app argument ");
    ExpectDescribed("app variable FROM_OUTSIDE=kept");
    ExpectDescribed("app variable FROM_BOTH=entry");
    ExpectDescribed("app variable FROM_ENTRY=a=b c");
    ExpectDescribed("app variable APP_NAME=app");
    ExpectDescribed("app variable READY_FD=3");
    ExpectDescribed("app descriptors " + std::to_string(before.rlim_cur));
    ExpectDescribed("app signals clean");
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, AProgramRunsAsTheOwnerOfItsEntryWithoutFurtherGroups)
{
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can change to other users";
    }
    std::filesystem::permissions(tree_.Path(""), std::filesystem::perms::all);
    std::filesystem::permissions(tree_.Path("trace"), std::filesystem::perms::all);
    if (access("/tmp", X_OK) != 0 || std::system("su -s /bin/sh nobody -c 'exec " TRACED_PROGRAM
                                                 " /dev/null exit=0' 2>/dev/null") == 126 << 8) {
        GTEST_SKIP() << "other users cannot execute the test program where it lies";
    }
    Add("app", {}, {"describe", "ready"}, "uid: 65533; gid: 65532");
    Run({"--all"});

    WaitForTrace("ready app");

    ExpectDescribed("app uid 65533 65533");
    ExpectDescribed("app gid 65532 65532");
    ExpectDescribed("app groups 0");
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, AManagerThatIsNotRootWarnsOfAnotherOwner)
{
    if (geteuid() == 0) {
        GTEST_SKIP() << "root can change to other users";
    }
    Add("app", {}, {"ready"}, "uid: 65533; gid: 65532");
    Run({"--all"});

    WaitForTrace("ready app");

    EXPECT_NE(Log().find("warning app: runs as the manager's user and group: only root can change"),
              std::string::npos);
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, AProgramRunsWithTheNiceValueAndTheCoresOfItsEntry)
{
    Add("app", {}, {"describe", "ready"}, "nice: 7; core_affinity: [0]");
    Run({"--all"});

    WaitForTrace("ready app");

    ExpectDescribed("app nice 7");
    ExpectDescribed("app cores 1 with 0");
    EXPECT_EQ(EndOnceStarted(), 0);
}

// Where the system allows real-time scheduling the program has it; where it does not, a warning says so.
TEST_F(StartTest, AProgramRunsInRealTimeOrTheManagerWarns)
{
    Add("app", {}, {"describe", "ready"}, "set_rt_prio: TRUE; set_rt_type: rr");
    Run({"--all"});

    WaitForLog("info started: app");

    const bool warned = Log().find("warning app: cannot set the real-time policy rr: ") != std::string::npos;
    ExpectDescribed("app policy " + std::to_string(warned ? SCHED_OTHER : SCHED_RR));
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, AProgramJoinsTheControlGroupOfItsEntry)
{
    std::filesystem::create_directory(tree_.Path("group"));
    tree_.Write("group/cgroup.procs", "");
    Add("app", {}, {"ready"}, "cgroup_path: {cpu: " + tree_.Path("group") + "}");
    Run({"--all"});

    WaitForTrace("ready app");

    std::ifstream procs(tree_.Path("group/cgroup.procs"));
    std::string written;
    procs >> written;
    EXPECT_EQ(written, "0"); // the system takes this for the writing process
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, WhatTheSystemRefusesIsAWarningAndTheProgramRuns)
{
    Add("app", {}, {"ready"},
        "core_affinity: [1023]; set_rt_prio: true; set_rt_type: fast; cgroup_path: {cpu: /nowhere}");
    Run({"--all"});

    WaitForLog("info started: app");

    EXPECT_EQ(Count("ready app"), 1);
    EXPECT_NE(Log().find("warning app: cannot set the core affinity: Invalid argument"), std::string::npos);
    EXPECT_NE(Log().find("warning app: cannot set the real-time policy fast: Invalid argument"),
              std::string::npos);
    EXPECT_NE(Log().find("warning app: cannot join the control group /nowhere: No such file or directory"),
              std::string::npos);
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(StartTest, NoDescriptorButTheStandardOnesAndTheReadyPipeReachesAProgram)
{
    const int inherited = open("/dev/null", O_RDONLY); // without O_CLOEXEC: the manager begins with it
    Add("plain");
    Add("also_plain");
    Add("reporting", {"plain", "also_plain"}, {"ready"});
    Run({"--all"});
    close(inherited);

    WaitForTrace("ready reporting");
    WaitForTrace("start plain");
    WaitForTrace("start also_plain");

    EXPECT_EQ(OpenDescriptorsOf(ProcessOf("plain")), (std::set<int>{0, 1, 2}));
    EXPECT_EQ(OpenDescriptorsOf(ProcessOf("also_plain")), (std::set<int>{0, 1, 2}));
    EXPECT_EQ(OpenDescriptorsOf(ProcessOf("reporting")), (std::set<int>{0, 1, 2, 3}));
    EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(ProcessOf("plain")) + "/fd/0"),
              "/dev/null");
    EXPECT_EQ(EndOnceStarted(), 0);
}

} // namespace
} // namespace process_manager_test
