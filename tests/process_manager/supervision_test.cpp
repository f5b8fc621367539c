// Programs that end are restarted as their policies say, within the limit on the rate.
#include <chrono>
#include <csignal>
#include <thread>

#include "tests/process_manager/manager_test.h"

namespace process_manager_test {
namespace {

using SupervisionTest = ManagerTest;

struct PolicyCase {
    const char* policy;
    const char* end;
    int starts;
};

// Each program ends twice in the same way and then stays. The name of a case is the name of its program.
TEST_F(SupervisionTest, EachPolicyRestartsAfterTheEndsThatItIsFor)
{
    const PolicyCase cases[] = {
        {"no", "exit=0", 1},
        {"no", "exit=1", 1},
        {"no", "kill=9", 1},
        {"on-failure", "exit=0", 1},
        {"on-failure", "exit=1", 3},
        {"on-failure", "kill=9", 3},
        {"on-forever", "exit=0", 3},
        {"on-forever", "exit=1", 3},
        {"on-forever", "kill=9", 3},
        {"on-until-succeed", "exit=0", 1},
        {"on-until-succeed", "exit=1", 3},
        {"on-until-succeed", "kill=9", 3},
    };
    const auto name = [](const PolicyCase& c) { return std::string(c.policy) + " " + c.end; };
    for (const PolicyCase& c : cases) {
        Add(name(c), {}, {"until=3", c.end}, std::string("restart: ") + c.policy);
    }
    Run({"--all"});

    for (const PolicyCase& c : cases) {
        WaitForTrace("start " + name(c), c.starts);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // for a start too many

    EXPECT_EQ(EndOnceStarted(), 0);
    for (const PolicyCase& c : cases) {
        EXPECT_EQ(Count("start " + name(c)), c.starts) << name(c);
    }
}

TEST_F(SupervisionTest, AKilledProgramIsRestartedAndItsEndLogged)
{
    Add("app", {}, {"ready"}, "restart: on-failure");
    Run({"--all"});
    WaitForTrace("ready app");
    const pid_t first = ProcessOf("app");

    kill(first, SIGKILL);
    WaitForTrace("ready app", 2);

    EXPECT_NE(ProcessOf("app"), first);
    EXPECT_NE(Log().find("warning app: ended by signal 9\n"), std::string::npos);
    EXPECT_EQ(EndOnceStarted(), 0);
    EXPECT_EQ(Count("stop app"), 1);
}

TEST_F(SupervisionTest, ExitStatusesAreLogged)
{
    Add("app", {}, {"exit=42"});
    Run({"--all"});

    WaitForLog("warning app: exited with status 42\n");

    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(SupervisionTest, OnFailureGivesUpAtTheLimitOnTheRate)
{
    Add("app", {}, {"exit=1"}, "restart: on-failure");
    Run({"--all"});

    WaitForLog("error app: is not restarted: the limit on the rate is reached\n");

    EXPECT_EQ(EndOnceStarted(), 0);
    EXPECT_EQ(Count("start app"), 1 + 5);
}

TEST_F(SupervisionTest, TheOtherPoliciesSlowDownAtTheLimitOnTheRate)
{
    Add("forever", {}, {"exit=0"}, "restart: on-forever");
    Add("until", {}, {"exit=1"}, "restart: on-until-succeed");
    const auto begin = std::chrono::steady_clock::now();
    Run({"--all"});

    WaitForTrace("start forever", 7);
    WaitForTrace("start until", 7);
    const auto passed = std::chrono::steady_clock::now() - begin;

    // Five restarts at once, the next one five seconds after the first of them.
    EXPECT_GE(passed, std::chrono::seconds(5));
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(SupervisionTest, NoProgramStaysAZombie)
{
    for (int i = 0; i < 10; ++i) {
        Add("short" + std::to_string(i), {}, {"exit=0"});
        Add("restarted" + std::to_string(i), {}, {"until=2", "exit=1"}, "restart: on-failure");
    }
    AddText("absent:\n  bin_path: /nowhere/program\n  uid: 0\n");
    Run({"--all"});

    for (int i = 0; i < 10; ++i) {
        WaitForLog("info short" + std::to_string(i) + ": exited with status 0\n");
        WaitForTrace("start restarted" + std::to_string(i), 2);
    }
    WaitForLog("absent: has not started");

    EXPECT_EQ(Children().size(), 10U);
    for (const auto& [process, state] : Children()) {
        EXPECT_NE(state, 'Z') << process;
    }
    EXPECT_EQ(End(), 1);
}

} // namespace
} // namespace process_manager_test
