// A program that fails to start holds back what needs it, and the manager says what that is.
#include <csignal>

#include "tests/process_manager/manager_test.h"

namespace process_manager_test {
namespace {

using FailedStartTest = ManagerTest;

TEST_F(FailedStartTest, AProgramThatCannotBeExecutedHoldsBackAllThatNeedsIt)
{
    AddText("broken:\n  bin_path: /nowhere/program\n  uid: 0\n");
    Add("above", {"broken"});
    Add("on_top", {"above"});
    Add("beside", {}, {"ready"});
    Run({"--all"});

    WaitForLog("error broken: has not started; waiting for it: above, on_top\n");
    WaitForTrace("ready beside");

    EXPECT_NE(Log().find("error broken: cannot execute /nowhere/program: No such file or directory\n"),
              std::string::npos);
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(Trace(), (Texts{"start beside", "ready beside", "stop beside"}));
}

TEST_F(FailedStartTest, AProgramThatEndsBeforeItIsReadyHasFailedToStart)
{
    AddText("quitter:\n  bin_path: /bin/false\n  uid: 0\n  is_reporting: true\n");
    Add("after_quitter", {"quitter"});
    Run({"--all"});

    WaitForLog("error quitter: has not started; waiting for it: after_quitter\n");

    EXPECT_EQ(End(), 1);
    EXPECT_EQ(Count("start after_quitter"), 0);
}

TEST_F(FailedStartTest, ClosingTheReadyDescriptorWithoutTheLineIsAFailedStart)
{
    Add("mute", {}, {"close"}, "is_reporting: true");
    Add("above", {"mute"});
    Run({"--all"});

    WaitForLog("error mute: has not started; waiting for it: above\n");

    EXPECT_EQ(End(), 1);
    EXPECT_EQ(Trace(), (Texts{"start mute", "stop mute"}));
}

TEST_F(FailedStartTest, AProgramThatIsReadyTooLateIsReportedAndStillReleasesWhatNeedsIt)
{
    Add("slow", {}, {"sleep=7000", "ready"}); // the manager speaks up after five seconds
    Add("above", {"slow"}, {"ready"});
    Run({"--all"});

    WaitForLog("error slow: has not started; waiting for it: above\n");
    EXPECT_EQ(Count("ready slow"), 0);
    WaitForTrace("ready above");

    ExpectOrder("ready slow", "start above");
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(FailedStartTest, ARestartThatSucceedsReleasesWhatWaits)
{
    AddText("flaky:\n  bin_path: /bin/sh\n  uid: 0\n  restart: on-failure\n  is_reporting: true\n"
            "  arguments: [-c, '[ -e " +
            tree_.Path("tried") + " ] || { touch " + tree_.Path("tried") +
            "; exit 3; }; echo READY >&3; exec sleep 1000']\n");
    Add("above", {"flaky"}, {"ready"});
    Run({"--start", "above"});

    WaitForTrace("ready above");

    EXPECT_NE(Log().find("error flaky: has not started; waiting for it: above\n"), std::string::npos);
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(FailedStartTest, ADependencyThatWasDroppedHoldsBackWhatNeedsIt)
{
    Add("dropped", {"missing"});
    Add("above", {"dropped"});
    Run({"--all"});

    WaitForLog("error dropped: has not started; waiting for it: above\n");

    EXPECT_EQ(End(), 1);
    EXPECT_TRUE(Trace().empty());
}

TEST_F(FailedStartTest, ACycleIsRefused)
{
    Add("a", {"b"});
    Add("b", {"a"});
    Run({"--all"});

    WaitForLog("error cannot start a, b: the system log says why\n");

    EXPECT_EQ(End(), 1);
    EXPECT_TRUE(Trace().empty());
}

TEST_F(FailedStartTest, AConfigurationThatCannotBeReadEndsTheManager)
{
    Run({"--replace", tree_.Path("missing.yaml"), "--all"});

    EXPECT_EQ(ExitStatus(), 2);
}

TEST_F(FailedStartTest, ACommandLineThatMakesNoSenseShowsTheUsage)
{
    Run({"--all", "slow"});

    EXPECT_EQ(ExitStatus(), 2);
    EXPECT_EQ(Log().find("usage: process_manager "), 0U);
}

} // namespace
} // namespace process_manager_test
