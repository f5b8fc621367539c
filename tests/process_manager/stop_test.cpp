// Programs stop before what they need, in time, on signals and on request.
#include <chrono>
#include <csignal>
#include <thread>

#include "tests/process_manager/manager_test.h"

namespace process_manager_test {
namespace {

class StopTest : public ManagerTest {
protected:
    void AddChain()
    {
        Add("top", {"middle"}, {"ready", "slow-stop=100"});
        Add("middle", {"base"}, {"ready", "slow-stop=100"});
        Add("base", {}, {"ready"});
    }

    // Runs until the process is gone, for half a minute at most.
    static bool Ends(pid_t process)
    {
        for (int i = 0; i < 3000 && IsAlive(process); ++i) {
            timespec wait{0, 10000000};
            nanosleep(&wait, nullptr);
        }
        return !IsAlive(process);
    }
};

TEST_F(StopTest, SigtermStopsEverythingInReverseOrder)
{
    AddChain();
    Run({"--all"});
    WaitForTrace("ready top");

    EXPECT_EQ(EndOnceStarted(), 0);

    const Texts trace = Trace();
    EXPECT_EQ(Texts(trace.end() - 3, trace.end()), (Texts{"stop top", "stop middle", "stop base"}));
}

TEST_F(StopTest, SigintDoesTheSame)
{
    AddChain();
    Run({"--all"});
    WaitForLog("info started: ");

    Signal(SIGINT);

    EXPECT_EQ(ExitStatus(), 0);
    const Texts trace = Trace();
    EXPECT_EQ(Texts(trace.end() - 3, trace.end()), (Texts{"stop top", "stop middle", "stop base"}));
}

TEST_F(StopTest, WhatHasEndedByItselfStillLiesBetweenItsNeighbours)
{
    Add("top", {"middle"}, {"ready", "slow-stop=200"});
    Add("middle", {"base"}, {"exit=0"});
    Add("base", {}, {"ready"});
    Run({"--all"});
    WaitForTrace("ready top");
    WaitForLog("middle: exited with status 0");

    EXPECT_EQ(EndOnceStarted(), 0);

    ExpectOrder("stop top", "stop base");
}

TEST_F(StopTest, AProgramThatIgnoresSigtermIsKilledWhenItsTimeIsOver)
{
    Add("deaf", {"base"}, {"ready", "ignore-term"}, "term_time_out: 400; is_force_term: true");
    Add("base", {}, {"ready"});
    Run({"--all"});
    WaitForTrace("ready deaf");
    const pid_t deaf = ProcessOf("deaf");
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(EndOnceStarted(), 0);

    const auto passed = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(passed, std::chrono::milliseconds(400));
    EXPECT_LT(passed, std::chrono::milliseconds(4000));
    EXPECT_FALSE(IsAlive(deaf));
    EXPECT_EQ(Count("stop base"), 1);
}

TEST_F(StopTest, AForcedEndTakesAlongWhatTheProgramHasStarted)
{
    AddText("shell:\n  bin_path: /bin/sh\n  uid: 0\n  is_reporting: true\n  term_time_out: 200\n"
            "  is_force_term: true\n  arguments: [-c, 'trap \"\" TERM; sleep 1000 & echo $! >" +
            tree_.Path("pid") + "; echo READY >&3; wait']\n");
    Run({"--all"});
    WaitForLog("shell: is ready");
    std::ifstream file(tree_.Path("pid"));
    pid_t helper = -1;
    file >> helper;
    ASSERT_GT(helper, 0);

    EXPECT_EQ(EndOnceStarted(), 0);

    EXPECT_TRUE(Ends(helper));
    kill(helper, SIGKILL);
}

TEST_F(StopTest, AProgramThatIsNotForcedIsReportedAndKeepsWhatItNeeds)
{
    Add("deaf", {"base"}, {"ready", "ignore-term"}, "term_time_out: 200");
    Add("base", {}, {"ready"});
    Add("beside", {}, {"ready"});
    Run({"--all"});
    WaitForTrace("ready deaf");
    WaitForTrace("ready beside");
    const pid_t deaf = ProcessOf("deaf");
    const pid_t base = ProcessOf("base");

    EXPECT_EQ(End(), 1);

    EXPECT_NE(Log().find("error deaf: has not ended 200 ms after SIGTERM and is not forced to"),
              std::string::npos);
    EXPECT_NE(Log().find("error not stopped: base, deaf\n"), std::string::npos);
    EXPECT_TRUE(IsAlive(deaf));
    EXPECT_TRUE(IsAlive(base));
    EXPECT_EQ(Count("stop base"), 0);
    EXPECT_EQ(Count("stop beside"), 1);
    kill(deaf, SIGKILL);
    kill(base, SIGKILL);
}

TEST_F(StopTest, ARequestStopsAProgramAndBeforeItWhatNeedsIt)
{
    AddChain();
    Run({"--all"});
    WaitForTrace("ready top");

    Request("stop middle");
    WaitForTrace("stop middle");

    ExpectOrder("stop top", "stop middle");
    WaitForLog("info stopped: ");
    EXPECT_EQ(Count("stop base"), 0);
    EXPECT_EQ(EndOnceStarted(), 0);
    EXPECT_EQ(Count("stop base"), 1);
}

TEST_F(StopTest, AStoppedProgramIsNotRestarted)
{
    Add("app", {}, {"ready"}, "restart: on-forever");
    Run({"--all"});
    WaitForTrace("ready app");

    Request("stop app");
    WaitForLog("info stopped: ");

    EXPECT_EQ(EndOnceStarted(), 0);
    EXPECT_EQ(Trace(), (Texts{"start app", "ready app", "stop app"}));
}

TEST_F(StopTest, AProgramThatWaitsForItsRestartIsStoppedAtOnce)
{
    Add("app", {}, {"exit=0"}, "restart: on-forever");
    Run({"--all"});
    WaitForTrace("start app", 6); // the limit on the rate is reached: the next start is due in five seconds
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(EndOnceStarted(), 0);

    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4));
    EXPECT_EQ(Count("start app"), 6);
}

TEST_F(StopTest, AStopInTheMiddleOfAStartBeginsNothingFurther)
{
    Add("top", {"slow"}, {"ready"});
    Add("slow", {"base"}, {"sleep=1500", "ready"});
    Add("base", {}, {"ready"});
    Run({"--all"});
    WaitForTrace("start slow");

    EXPECT_EQ(End(), 1);

    EXPECT_EQ(Count("start top"), 0);
    ExpectOrder("stop slow", "stop base");
}

TEST_F(StopTest, RequestsThatMakeNoSenseAreReported)
{
    Add("app", {}, {"ready"});
    Add("unasked");
    Run({"--start", "app"});
    WaitForTrace("ready app");

    Request("halt app");
    Request("stop unasked app_");

    WaitForLog("warning a request is \"stop NAME...\", not \"halt app\"\n");
    WaitForLog("warning unasked: cannot be stopped: it was never started\n");
    WaitForLog("warning app_: cannot be stopped: it was never started\n");
    EXPECT_EQ(Count("stop app"), 0);
    EXPECT_EQ(EndOnceStarted(), 0);
    EXPECT_EQ(Count("stop app"), 1);
}

TEST_F(StopTest, TheEndOfStandardInputEndsNothing)
{
    Add("app", {}, {"ready"});
    Run({"--all"});
    WaitForTrace("ready app");

    CloseStandardInput();
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // for an end that must not come

    EXPECT_EQ(Count("stop app"), 0);
    EXPECT_EQ(EndOnceStarted(), 0);
}

} // namespace
} // namespace process_manager_test
