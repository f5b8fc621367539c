// Members of families, which are configured as patterns, run under their own names.
#include "tests/process_manager/manager_test.h"

namespace process_manager_test {
namespace {

using FamilyTest = ManagerTest;

TEST_F(FamilyTest, AMemberRunsByTheEntryOfItsFamilyAndLearnsItsName)
{
    Add("camera_<0-3>", {"bus"}, {"describe", "ready"});
    Add("bus", {}, {"ready"});
    Run({"--start", "camera_2"});

    WaitForTrace("ready camera_2");

    EXPECT_EQ(Count("camera_2 variable APP_NAME=camera_2"), 1);
    EXPECT_EQ(EndOnceStarted(), 0);
    ExpectOrder("ready bus", "start camera_2");
    ExpectOrder("stop camera_2", "stop bus");
}

TEST_F(FamilyTest, AllStartsEveryApplicationThatIsNoPattern)
{
    Add("camera_<0-3>", {}, {"ready"});
    Add("recorder_<*>", {}, {"ready"});
    Add("bus", {}, {"ready"});
    Run({"--all"});

    WaitForLog("info started: bus\n");

    EXPECT_EQ(EndOnceStarted(), 0);
    EXPECT_EQ(Trace(), (Texts{"start bus", "ready bus", "stop bus"}));
}

TEST_F(FamilyTest, WhatNeedsAFamilyRunsWhileItsMembersDo)
{
    Add("viewer", {"camera_<0-12>"}, {"ready", "slow-stop=200"});
    Add("camera_<0-12>", {}, {"sleep=200", "ready"});
    Run({"--start", "viewer", "camera_1", "camera_12"});

    WaitForTrace("ready viewer");

    ExpectOrder("ready camera_1", "start viewer");
    ExpectOrder("ready camera_12", "start viewer");
    EXPECT_EQ(EndOnceStarted(), 0);
    ExpectOrder("stop viewer", "stop camera_1");
    ExpectOrder("stop viewer", "stop camera_12");
}

TEST_F(FamilyTest, StoppingOneMemberStopsWhatNeedsTheFamilyAndNoOtherMember)
{
    Add("viewer", {"camera_<*>"}, {"ready", "slow-stop=200"});
    Add("camera_<*>", {}, {"ready"});
    Run({"--start", "viewer", "camera_left", "camera_right"});
    WaitForTrace("ready viewer");

    Request("stop camera_left");
    WaitForTrace("stop camera_left");

    ExpectOrder("stop viewer", "stop camera_left");
    EXPECT_EQ(Count("stop camera_right"), 0);
    WaitForLog("info stopped: ");
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(FamilyTest, AFamilyWithoutAMemberHoldsNothingBack)
{
    Add("viewer", {"camera_<0-3>"}, {"ready"});
    Add("camera_<0-3>");
    Run({"--start", "viewer"});

    WaitForTrace("ready viewer");
    EXPECT_EQ(EndOnceStarted(), 0);
}

TEST_F(FamilyTest, AMemberThatFailsHoldsBackWhatNeedsTheFamily)
{
    Add("viewer", {"camera_<0-3>"}, {"ready"});
    AddText("camera_<0-3>:\n  bin_path: /nowhere/program\n  uid: 0\n");
    Run({"--start", "viewer", "camera_0"});

    WaitForLog("error camera_0: has not started; waiting for it: viewer\n");

    EXPECT_EQ(End(), 1);
    EXPECT_TRUE(Trace().empty());
}

TEST_F(FamilyTest, ACycleThroughAFamilyIsRefused)
{
    Add("viewer", {"camera_<0-3>"});
    Add("camera_<0-3>", {"viewer"});
    Run({"--start", "viewer", "camera_0"});

    WaitForLog("error cannot start viewer, camera_0: the system log says why\n");

    EXPECT_EQ(End(), 1);
    EXPECT_TRUE(Trace().empty());
}

TEST_F(FamilyTest, PatternsAndNamesThatOnlyBeginLikeAnApplicationCannotBeStarted)
{
    Add("camera_<0-3>");
    Add("record_<*>");
    Add("log", {}, {"ready"});
    Run({"--start", "camera_<0-3>", "record_<*>", "camera_7", "log_reader", "log"});

    WaitForTrace("ready log");

    for (const char* name : {"camera_<0-3>", "record_<*>", "camera_7", "log_reader"}) {
        EXPECT_NE(Log().find(std::string("error ") + name + ": cannot be started"), std::string::npos)
            << name;
    }
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(Trace(), (Texts{"start log", "ready log", "stop log"}));
}

} // namespace
} // namespace process_manager_test
