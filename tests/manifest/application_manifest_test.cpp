// One application's record: what the constructor stores where, what a copy holds, what the getters hand out.

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "tests/support/manifest_builder.h"

using test_support::ManifestValues;
using test_support::TextOf;

static_assert(!std::is_default_constructible_v<ApplicationManifest>);
static_assert(std::is_copy_constructible_v<ApplicationManifest>);
static_assert(std::is_nothrow_move_constructible_v<ApplicationManifest>);
static_assert(!std::is_copy_assignable_v<ApplicationManifest>);
static_assert(!std::is_move_assignable_v<ApplicationManifest>);
static_assert(!std::is_polymorphic_v<ApplicationManifest>);

static_assert(std::is_default_constructible_v<SharepoolGroupsInfo>);
static_assert(std::is_copy_constructible_v<SharepoolGroupsInfo>);
static_assert(std::is_copy_assignable_v<SharepoolGroupsInfo>);
static_assert(std::is_nothrow_move_constructible_v<SharepoolGroupsInfo>);
static_assert(std::is_nothrow_move_assignable_v<SharepoolGroupsInfo>);
static_assert(std::is_aggregate_v<SharepoolGroupsInfo>);

// The getters that hand out the member itself, and those that hand out a copy.
template <typename Result>
using Getter = Result (ApplicationManifest::*)() const;
using Text = std::string;

static_assert(std::is_same_v<decltype(&ApplicationManifest::GetAppName), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetBinPath), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetRestart), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetSoName), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetSoPath), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetProcessBindPath), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetResGroupName), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetCpuset), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetBlkioGroupName), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetCfgPath), Getter<const Text&>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetVfIdPattern), Getter<Text>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetSetRtPrio), Getter<Text>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetSecurityCon), Getter<Text>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetStartupEntryPath), Getter<Text>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetSetRtType), Getter<Text>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetUid), Getter<std::uint32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetGid), Getter<std::uint32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetTermTimeOut), Getter<std::uint32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetHeartBeatInterval), Getter<std::uint32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetHeartBeatCount), Getter<std::uint32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetNodeType), Getter<std::uint32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetNice), Getter<std::int32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetVfId), Getter<std::int32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetStartupPriority), Getter<std::int32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetNumaType), Getter<std::int32_t>>);
static_assert(std::is_same_v<decltype(&ApplicationManifest::GetProcessType), Getter<std::int32_t>>);

namespace {

// Forty values that differ wherever their types let them.
ManifestValues DistinctValues()
{
    ManifestValues values;
    values.appName = "the name";
    values.binPath = "the bin path";
    values.dependList = {"dep b", "dep a", "dep c"};
    values.uid = 4;
    values.arguments = {"-z", "", "-a"};
    values.restart = "the restart";
    values.soName = "the so name";
    values.soPath = "the so path";
    values.processBindPath = "the bind path";
    values.termTimeOut = 11;
    values.coreAffinity = {15, 3, 15};
    values.resGroupName = "the group";
    values.envArgv = {{"B", "2"}, {"A", "1"}};
    values.gid = 19;
    values.setRtPrio = "the prio";
    values.sharepoolGroups = {{"z", "rw"}, {"a", "ro"}};
    values.securityCon = "the context";
    values.nice = -23;
    values.startupEntryPath = "the entry path";
    values.cpuset = "the cpuset";
    values.heartBeatSwitch = false;
    values.heartBeatInterval = 27;
    values.heartBeatCount = 28;
    values.nodeType = 29;
    values.vfId = 30;
    values.startupPriority = 31;
    values.vfIdPattern = "the pattern";
    values.blkioGroupName = "the blkio";
    values.cgroupPath = {{"m", "/2"}, {"c", "/z"}, {"c", "/a"}, {"m", "/1"}};
    values.setRtType = "the type";
    values.numaType = -38;
    values.processType = 39;
    values.cfgPath = "the cfg path";
    return values;
}

TEST(ApplicationManifestTest, EveryArgumentIsStoredUnchangedInItsMember)
{
    const ManifestValues values = DistinctValues();

    const ApplicationManifest app = values.Build();

    EXPECT_EQ(TextOf(app), TextOf(values));
}

TEST(ApplicationManifestTest, Argument20IsTheRealTimeTextAnd23IsNice)
{
    const ApplicationManifest app("name", "bin", {}, 4, {}, "no", false, "", "", "", 11, false, false, false,
                                  {}, "", false, {}, 19, "argument 20", {}, "argument 22", 23, "argument 24",
                                  "", true, 27, 28, 29, 30, 31, false, "", false, "", {}, "", 38, 39,
                                  "argument 40");

    EXPECT_EQ(app.GetGid(), 19U);
    EXPECT_EQ(app.GetSetRtPrio(), "argument 20");
    EXPECT_EQ(app.GetSecurityCon(), "argument 22");
    EXPECT_EQ(app.GetNice(), 23);
    EXPECT_EQ(app.GetStartupEntryPath(), "argument 24");
    EXPECT_EQ(app.GetCfgPath(), "argument 40");
}

TEST(ApplicationManifestTest, EachFlagIsReadBackByItsOwnGetter)
{
    bool ManifestValues::*const flags[] = {
        &ManifestValues::isSo,
        &ManifestValues::isForceTerm,
        &ManifestValues::isRosNode,
        &ManifestValues::isReporting,
        &ManifestValues::isAutoBoot,
        &ManifestValues::heartBeatSwitch,
        &ManifestValues::isDelayCoreAffinity,
        &ManifestValues::isDynamicPara,
    };
    for (bool ManifestValues::*const flag : flags) {
        ManifestValues values = DistinctValues();
        values.*flag = true;

        EXPECT_EQ(TextOf(values.Build()), TextOf(values));
    }
}

TEST(ApplicationManifestTest, NothingIsValidatedOrConverted)
{
    ManifestValues values;
    values.appName = "";
    values.binPath = "";
    values.uid = 0xFFFFFFFFU;
    values.restart = "Whenever";
    values.arguments.assign(1000, "x");
    values.setRtPrio = "TRUE";
    values.startupPriority = 100000;
    values.sharepoolGroups = {{"", "everything"}};
    values.soName = std::string("a\0b", 3);

    EXPECT_EQ(TextOf(values.Build()), TextOf(values));
}

TEST(ApplicationManifestTest, OnlyTheExactTextTrueSetsTheRealTimeSwitch)
{
    struct Case {
        std::string text;
        bool isSet;
    };
    for (const Case& c : {Case{"true", true}, Case{"TRUE", false}, Case{"True", false}, Case{" true", false},
                          Case{"true ", false}, Case{"", false}, Case{"1", false}, Case{"yes", false},
                          Case{"on", false}, Case{"untrue", false}, Case{"tru", false},
                          Case{std::string("true\0", 5), false}, Case{"fifo", false}}) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        ManifestValues values;
        values.setRtPrio = c.text;

        EXPECT_EQ(values.Build().GetIsSetRtPrio(), c.isSet);
    }
}

TEST(ApplicationManifestTest, ACopyHoldsEverythingInTheSameOrder)
{
    const ManifestValues values = DistinctValues();
    std::vector<ApplicationManifest> source = {values.Build()};

    const ApplicationManifest copy = source.front();
    source.clear();

    EXPECT_EQ(TextOf(copy), TextOf(values));
}

TEST(ApplicationManifestTest, AMovedRecordHoldsEverything)
{
    const ManifestValues values = DistinctValues();
    ApplicationManifest source = values.Build();

    const ApplicationManifest moved = std::move(source);

    EXPECT_EQ(TextOf(moved), TextOf(values));
}

TEST(ApplicationManifestTest, AGrowingVectorKeepsItsRecords)
{
    std::vector<ApplicationManifest> apps;
    ManifestValues values = DistinctValues();
    for (int i = 0; i < 100; ++i) {
        values.appName = std::to_string(i);
        apps.push_back(values.Build());
    }
    for (std::size_t i = 0; i < apps.size(); ++i) {
        values.appName = std::to_string(i);
        ASSERT_EQ(TextOf(apps[i]), TextOf(values));
    }
}

TEST(ApplicationManifestTest, ChangingAnArgumentAfterwardsOrAReturnedCopyLeavesTheRecordAlone)
{
    ManifestValues values = DistinctValues();
    const std::string before = TextOf(values);
    const ApplicationManifest app = values.Build();

    values = ManifestValues();
    for (std::string text : {app.GetSecurityCon(), app.GetVfIdPattern(), app.GetSetRtPrio(),
                             app.GetStartupEntryPath(), app.GetSetRtType()}) {
        text += "changed";
    }

    EXPECT_EQ(TextOf(app), before);
}

TEST(ApplicationManifestTest, GettersOfReferencesGiveTheMemberItself)
{
    const ApplicationManifest app = DistinctValues().Build();

    EXPECT_EQ(&app.GetAppName(), &app.GetAppName());
    EXPECT_EQ(&app.GetDependList(), &app.GetDependList());
    EXPECT_EQ(&app.GetArguments(), &app.GetArguments());
    EXPECT_EQ(&app.GetCoreAffinity(), &app.GetCoreAffinity());
    EXPECT_EQ(&app.GetEnvArgv(), &app.GetEnvArgv());
    EXPECT_EQ(&app.GetSharepoolGroups(), &app.GetSharepoolGroups());
    EXPECT_EQ(&app.GetCGroupPath(), &app.GetCGroupPath());
}

TEST(ApplicationManifestTest, OrderedValuesAreAscendingAndEqualCgroupKeysKeepTheirOrder)
{
    const ApplicationManifest app = DistinctValues().Build();

    const std::vector<std::pair<std::string, std::string>> cgroups(app.GetCGroupPath().begin(),
                                                                   app.GetCGroupPath().end());
    EXPECT_EQ(cgroups, (std::vector<std::pair<std::string, std::string>>(
                           {{"c", "/z"}, {"c", "/a"}, {"m", "/2"}, {"m", "/1"}})));
    EXPECT_EQ(*app.GetDependList().begin(), "dep a");
    EXPECT_EQ(app.GetEnvArgv().begin()->first, "A");
}

} // namespace
