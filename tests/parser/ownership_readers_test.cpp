// As whom an application runs: numbers before names, the fall-backs, and what is left of an account record.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "tests/support/accounts.h"
#include "tests/support/log_capture.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using test_support::Accounts;
using test_support::Lines;
using test_support::Load;
using test_support::LogLine;
using test_support::MissingNodes;

namespace {

const LogLine kNoUser = {LOG_INFO, "uid and userName are empty, set uid to default value"};
const LogLine kNoGroup = {LOG_INFO, "gid and groupName are empty, set gid to default value"};

class OwnershipReadersTest : public testing::Test {
protected:
    // Presets that no rule gives by itself, then the ids of the entry.
    void Read(const KvsTypeYaml& entry)
    {
        uid_ = 77;
        gid_ = 88;
        parser_.GetOwnership(entry, uid_, gid_);
    }

    const ProcMgr::YamlParser parser_{};
    test_support::LogCapture log_;
    Accounts accounts_;
    std::uint32_t uid_ = 77;
    std::uint32_t gid_ = 88;
};

struct NumberCase {
    const char* entry;
    std::uint32_t uid;
    std::uint32_t gid;
};
const NumberCase kNumberCases[] = {
    {"{uid: 500}", 500, 500},
    {"{gid: 20}", 1000, 20},
    {"{uid: 500, gid: 20}", 500, 20},
    {"{gid: 20, uid: 500}", 500, 20},
    {"{uid: 0, user_name: alice, group_name: staff}", 0, 0},
    {"{gid: 0, user_name: alice, group_name: staff}", 1000, 0},
    {"{uid: -1}", 4294967295U, 4294967295U},
    {"{uid: 3, gid: -1}", 3, 4294967295U},
    {"{uid: 4294967295}", 2147483647, 2147483647},
    {"{uid: , user_name: alice}", 0, 0}, // present is enough
    {"{uid: 5, gid: }", 5, 0},
    {"{uid: abc}", 0, 0},
    {"{uid: [7], gid: {a: 7}}", 0, 0},
    {"{uid: 1, uid: 2}", 1, 1},
};

TEST_F(OwnershipReadersTest, NumbersWinAndNoAccountIsLookedUp)
{
    accounts_.AddUser("alice", 501);
    accounts_.AddGroup("staff", 50);
    for (const NumberCase& c : kNumberCases) {
        SCOPED_TRACE(c.entry);

        Read(Load(c.entry));

        EXPECT_EQ(uid_, c.uid);
        EXPECT_EQ(gid_, c.gid);
    }
    EXPECT_TRUE(accounts_.Lookups().empty());
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(OwnershipReadersTest, TheGroupNumberFallsBackToTheUserNumberAndThenTo1000)
{
    EXPECT_EQ(parser_.GetGid(Load("{gid: 20, uid: 5}")), 20U);
    EXPECT_EQ(parser_.GetGid(Load("{uid: 5}")), 5U);
    EXPECT_EQ(parser_.GetGid(Load("{uid: -5}")), 4294967291U);
    EXPECT_EQ(parser_.GetGid(Load("{gid: , uid: 5}")), 0U);
    EXPECT_EQ(parser_.GetGid(Load("{group_name: staff}")), 1000U);
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(OwnershipReadersTest, NamesAreLookedUpWhereNoNumberIsGiven)
{
    accounts_.AddUser("alice", 501);
    accounts_.AddGroup("staff", 50);

    Read(Load("{group_name: staff, user_name: alice}"));

    EXPECT_EQ(uid_, 501U);
    EXPECT_EQ(gid_, 50U);
    EXPECT_EQ(accounts_.Lookups(), std::vector<std::string>({"user alice", "group staff"}));
    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_INFO, "override uid:501, userName=alice"},
                            {LOG_INFO, "override gid:50, groupName=staff"}}));
    EXPECT_EQ(lines[0].format, "override uid:%u, userName=%s");
    EXPECT_EQ(lines[1].format, "override gid:%u, groupName=%s");
}

TEST_F(OwnershipReadersTest, TheGroupIsNeverTakenFromTheUsersAccount)
{
    accounts_.AddUser("alice", 501);

    Read(Load("{user_name: alice}"));

    EXPECT_EQ(uid_, 501U);
    EXPECT_EQ(gid_, 88U);
    EXPECT_EQ(log_.Take(), Lines({{LOG_INFO, "override uid:501, userName=alice"}, kNoGroup}));
}

TEST_F(OwnershipReadersTest, AGroupNameAloneLeavesTheUserAtThePreset)
{
    accounts_.AddGroup("staff", 50);

    Read(Load("{group_name: staff}"));

    EXPECT_EQ(uid_, 77U);
    EXPECT_EQ(gid_, 50U);
    EXPECT_EQ(log_.Take(), Lines({kNoUser, {LOG_INFO, "override gid:50, groupName=staff"}}));
}

TEST_F(OwnershipReadersTest, WithoutNumbersAndNamesThePresetsStay)
{
    for (const char* entry :
         {"{}", "{user_name: , group_name: ''}", "{user_name: [a], group_name: {a: b}}"}) {
        SCOPED_TRACE(entry);

        Read(Load(entry));

        EXPECT_EQ(uid_, 77U);
        EXPECT_EQ(gid_, 88U);
        EXPECT_EQ(log_.Take(), Lines({kNoUser, kNoGroup}));
    }
    EXPECT_TRUE(accounts_.Lookups().empty());
}

TEST_F(OwnershipReadersTest, UnknownNamesAreErrorsAndThePresetsStay)
{
    Read(Load("{user_name: nobody, group_name: nogroup}"));

    EXPECT_EQ(uid_, 77U);
    EXPECT_EQ(gid_, 88U);
    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_ERR, "getpwnam failed, userName=nobody"},
                            {LOG_ERR, "getgrnam failed, groupName=nogroup"}}));
    EXPECT_EQ(lines[0].format, "getpwnam failed, userName=%s");
    EXPECT_EQ(lines[1].format, "getgrnam failed, groupName=%s");
}

TEST_F(OwnershipReadersTest, TheUsersRecordIsWipedWholeAndItsStringsAreNot)
{
    passwd& record = accounts_.AddUser("alice", 501);
    const char* const name = record.pw_name;

    parser_.GetUidByUserName("alice", uid_);

    EXPECT_EQ(uid_, 501U);
    unsigned char bytes[sizeof record];
    std::memcpy(bytes, &record, sizeof record);
    EXPECT_TRUE(
        std::all_of(std::begin(bytes), std::end(bytes), [](unsigned char byte) { return byte == 0; }));
    EXPECT_STREQ(name, "alice");
}

TEST_F(OwnershipReadersTest, TheGroupsRecordIsLeftAsItIs)
{
    group& record = accounts_.AddGroup("staff", 50);
    const group before = record;

    parser_.GetGidByGroupName("staff", gid_);

    EXPECT_EQ(gid_, 50U);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
    EXPECT_STREQ(record.gr_name, "staff");
}

TEST_F(OwnershipReadersTest, AnEmptyNameIsNotLookedUp)
{
    parser_.GetUidByUserName("", uid_);
    parser_.GetGidByGroupName("", gid_);

    EXPECT_EQ(uid_, 77U);
    EXPECT_EQ(gid_, 88U);
    EXPECT_TRUE(accounts_.Lookups().empty());
    EXPECT_EQ(log_.Take(), Lines({kNoUser, kNoGroup}));
}

TEST_F(OwnershipReadersTest, AnyIdOfAnAccountIsTaken)
{
    accounts_.AddUser("max", 4294967295U);
    accounts_.AddGroup("max", 4294967295U);

    Read(Load("{user_name: max, group_name: max}"));

    EXPECT_EQ(uid_, 4294967295U);
    EXPECT_EQ(gid_, 4294967295U);
    EXPECT_EQ(log_.Take(), Lines({{LOG_INFO, "override uid:4294967295, userName=max"},
                                  {LOG_INFO, "override gid:4294967295, groupName=max"}}));
}

TEST_F(OwnershipReadersTest, AnEntryThatIsNoMappingIsAskedForAllFourKeys)
{
    using test_support::NoMappingFor;
    Read(Load("text"));

    EXPECT_EQ(uid_, 77U);
    EXPECT_EQ(gid_, 88U);
    EXPECT_EQ(log_.Take(), Lines({NoMappingFor("uid"), NoMappingFor("gid"), NoMappingFor("user_name"),
                                  kNoUser, NoMappingFor("group_name"), kNoGroup}));

    EXPECT_EQ(parser_.GetGid(Load("text")), 1000U);
    EXPECT_EQ(log_.Take(), Lines({NoMappingFor("gid"), NoMappingFor("uid")}));
}

TEST_F(OwnershipReadersTest, AKeyBehindAMissingNodeCountsAsAbsent)
{
    using test_support::MissingNodeBefore;
    const MissingNodes missing("GONE");

    Read(Load("{uid: 5, GONE: 1, gid: 6}"));
    EXPECT_EQ(uid_, 5U);
    EXPECT_EQ(gid_, 5U);
    EXPECT_EQ(log_.Take(), Lines({MissingNodeBefore("gid")}));

    Read(Load("{gid: 6, GONE: 1, uid: 5}"));
    EXPECT_EQ(uid_, 1000U);
    EXPECT_EQ(gid_, 6U);
    EXPECT_EQ(log_.Take(), Lines({MissingNodeBefore("uid"), MissingNodeBefore("uid")}));

    Read(Load("{GONE: 1, uid: 5, gid: 6}"));
    EXPECT_EQ(uid_, 77U);
    EXPECT_EQ(gid_, 88U);
    EXPECT_EQ(log_.Take(),
              Lines({MissingNodeBefore("uid"), MissingNodeBefore("gid"), MissingNodeBefore("user_name"),
                     kNoUser, MissingNodeBefore("group_name"), kNoGroup}));
}

TEST(OwnershipOfThisSystemTest, TheAdministratorsAccountIsFoundByName)
{
    test_support::LogCapture log;
    std::uint32_t uid = 77;
    std::uint32_t gid = 88;

    ProcMgr::YamlParser().GetOwnership(Load("{user_name: root, group_name: root}"), uid, gid);

    EXPECT_EQ(uid, 0U);
    EXPECT_EQ(gid, 0U);
    EXPECT_EQ(log.Take(), Lines({{LOG_INFO, "override uid:0, userName=root"},
                                 {LOG_INFO, "override gid:0, groupName=root"}}));
}

} // namespace
