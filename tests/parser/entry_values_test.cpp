// What each key of an application entry makes of the record, one key at a time: absent, given, empty, of the
// wrong kind, repeated.

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "tests/support/log_capture.h"
#include "tests/support/manifest_builder.h"
#include "tests/support/startup_tree.h"

using test_support::Lines;
using test_support::ManifestValues;
using test_support::TextOf;
using test_support::Texts;

namespace {

using Change = std::function<void(ManifestValues&)>;

// Keys added to an entry that has nothing but "bin_path", and what that changes in its record.
struct KeyCase {
    const char* keys;
    Change change;
};

const Change kNothing = [](ManifestValues&) {};

template <typename Value>
Change Set(Value ManifestValues::*member, const Value& value)
{
    return [member, value](ManifestValues& values) { values.*member = value; };
}

Change SetText(std::string ManifestValues::*member, const std::string& value)
{
    return Set(member, value);
}

Change SetIds(std::uint32_t uid, std::uint32_t gid)
{
    return [uid, gid](ManifestValues& values) {
        values.uid = uid;
        values.gid = gid;
    };
}

Change SetDevice(std::int32_t number, const std::string& text)
{
    return [number, text](ManifestValues& values) {
        values.vfId = number;
        values.vfIdPattern = text;
    };
}

class EntryValuesTest : public test_support::StartupTreeFixture {
protected:
    void Expect(const std::string& keys, const Change& change)
    {
        SCOPED_TRACE(keys);
        const std::string path = Write("apps.yaml", "app:\n  bin_path: /bin/app\n" + keys);
        ManifestValues expected;
        expected.cfgPath = path;
        change(expected);
        apps_.clear();

        EXPECT_TRUE(parser_.CreateApplicationByStartupFile(path, apps_));

        ASSERT_EQ(apps_.size(), 1U);
        EXPECT_EQ(TextOf(apps_[0]), TextOf(expected));
    }
};

TEST_F(EntryValuesTest, AnEntryWithNothingButABinPathGetsEveryDefault)
{
    Expect("", kNothing);
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines());
}

TEST_F(EntryValuesTest, UnknownAndMisspeltKeysAreIgnored)
{
    for (const char* keys : {"  unknown: 1\n", "  is_dynamic_para: true\n", "  Nice: 3\n", "  nice : 0\n",
                             "  is_delay_core_affinity: true\n", "  cfg_path: /x\n", "  app_name: x\n",
                             "  appName: x\n", "  code_affinity: [1]\n", "  ? [a]\n  : 1\n"}) {
        Expect(keys, kNothing);
    }
}

TEST_F(EntryValuesTest, TextKeysAreStoredAsWritten)
{
    using Values = ManifestValues;
    const KeyCase cases[] = {
        {"  so_name: libA.so\n", SetText(&Values::soName, "libA.so")},
        {"  so_path: ' /Lib '\n", SetText(&Values::soPath, " /Lib ")},
        {"  process_bind_path: /p\n", SetText(&Values::processBindPath, "/p")},
        {"  res_group_name: G\n", SetText(&Values::resGroupName, "G")},
        {"  security_con: u:r:t\n", SetText(&Values::securityCon, "u:r:t")},
        {"  startup_entry_path: E\n", SetText(&Values::startupEntryPath, "E")},
        {"  cpuset: 0-3\n", SetText(&Values::cpuset, "0-3")},
        {"  blkio_cgroup_name: B\n", SetText(&Values::blkioGroupName, "B")},
        {"  set_rt_type: FIFO\n", SetText(&Values::setRtType, "FIFO")},
        {"  set_rt_prio: FIFO\n", SetText(&Values::setRtPrio, "fifo")}, // this one is lowered
        {"  set_rt_prio: 'TRUE '\n", SetText(&Values::setRtPrio, "true ")},
        {"  so_name: null\n", SetText(&Values::soName, "null")},
        {"  so_name:\n", kNothing},
        {"  so_name: [a]\n", kNothing},
        {"  so_name: {a: b}\n", kNothing},
        {"  so_name: first\n  so_name: second\n", SetText(&Values::soName, "first")},
    };
    for (const KeyCase& c : cases) {
        Expect(c.keys, c.change);
    }
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines());
}

TEST_F(EntryValuesTest, FlagsAreTrueWhereTheWordTrueOccurs)
{
    using Values = ManifestValues;
    const KeyCase cases[] = {
        {"  is_so: true\n", Set(&Values::isSo, true)},
        {"  is_force_term: True\n", Set(&Values::isForceTerm, true)},
        {"  is_ros_node: TRUE\n", Set(&Values::isRosNode, true)},
        {"  is_reporting: untrue\n", Set(&Values::isReporting, true)},
        {"  is_auto_boot: ' true'\n", Set(&Values::isAutoBoot, true)},
        {"  isDynamicPara: True\n", Set(&Values::isDynamicPara, true)},
        {"  heart_beat: true\n", kNothing},
        {"  heart_beat: false\n", Set(&Values::heartBeatSwitch, false)},
        {"  heart_beat: yes\n", Set(&Values::heartBeatSwitch, false)},
        {"  heart_beat:\n", Set(&Values::heartBeatSwitch, false)}, // present, so no default
        {"  heart_beat: [true]\n", Set(&Values::heartBeatSwitch, false)},
        {"  is_so: yes\n", kNothing},
        {"  is_so: 1\n", kNothing},
        {"  is_so:\n", kNothing},
        {"  is_so: false\n  is_so: true\n", kNothing},
    };
    for (const KeyCase& c : cases) {
        Expect(c.keys, c.change);
    }
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines());
}

TEST_F(EntryValuesTest, NumbersAreReadAsSignedAndDefaultOnlyWhereTheKeyIsAbsent)
{
    using Values = ManifestValues;
    const KeyCase cases[] = {
        {"  term_time_out: 5000\n", Set(&Values::termTimeOut, 5000U)},
        {"  term_time_out: 2.5s\n", Set(&Values::termTimeOut, 2U)},
        {"  term_time_out: -1\n", Set(&Values::termTimeOut, 4294967295U)},
        {"  term_time_out: 4000000000\n", Set(&Values::termTimeOut, 2147483647U)},
        {"  term_time_out:\n", Set(&Values::termTimeOut, 0U)},
        {"  term_time_out: [1]\n", Set(&Values::termTimeOut, 0U)},
        {"  term_time_out: 1\n  term_time_out: 2\n", Set(&Values::termTimeOut, 1U)},
        {"  heart_beat_interval: 7\n", Set(&Values::heartBeatInterval, 7U)},
        {"  heart_beat_interval: -1\n", Set(&Values::heartBeatInterval, 4294967295U)},
        {"  heart_beat_interval: 3000000000\n", Set(&Values::heartBeatInterval, 2147483647U)},
        {"  heart_beat_interval:\n", Set(&Values::heartBeatInterval, 0U)},
        {"  heart_beat_count: 8\n", Set(&Values::heartBeatCount, 8U)},
        {"  heart_beat_count: x\n", Set(&Values::heartBeatCount, 0U)},
        {"  nice: -20\n", Set(&Values::nice, -20)},
        {"  nice: 3000000000\n", Set(&Values::nice, 2147483647)},
        {"  numa_type: 2\n", Set(&Values::numaType, 2)},
        {"  process_type: -3\n", Set(&Values::processType, -3)},
    };
    for (const KeyCase& c : cases) {
        Expect(c.keys, c.change);
    }
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines());
}

TEST_F(EntryValuesTest, TheDeviceIdIsStoredAsNumberAndAsText)
{
    const KeyCase cases[] = {
        {"  device_id: 3\n", SetDevice(3, "3")},         {"  device_id: <1-3>\n", SetDevice(0, "<1-3>")},
        {"  device_id: ' 07x'\n", SetDevice(7, " 07x")}, {"  device_id:\n", SetDevice(0, "")},
        {"  device_id: -2\n", SetDevice(-2, "-2")},      {"  device_id: [1]\n", SetDevice(0, "")},
    };
    for (const KeyCase& c : cases) {
        Expect(c.keys, c.change);
    }
}

TEST_F(EntryValuesTest, KeysWithAReaderOfTheirOwnReachTheirMember)
{
    using Values = ManifestValues;
    const KeyCase cases[] = {
        {"  uid: 5\n", SetIds(5, 5)},
        {"  uid: 0\n  gid: 20\n", SetIds(0, 20)},
        {"  gid: 20\n", SetIds(1000, 20)},
        {"  user_name: root\n", SetIds(0, 1000)},
        {"  group_name: root\n", SetIds(1000, 0)},
        {"  restart: on-failure\n", SetText(&Values::restart, "on-failure")},
        {"  depends: [b, a, b]\n", Set(&Values::dependList, {"a", "b"})},
        {"  arguments: [-a, '', b]\n", Set(&Values::arguments, Texts({"-a", "", "b"}))},
        {"  core_affinity: [3, 0]\n", Set(&Values::coreAffinity, {3U, 0U})},
        {"  env: {B: 2, A: 1}\n", Set(&Values::envArgv, {{"A", "1"}, {"B", "2"}})},
        {"  node_type: 1F\n", Set(&Values::nodeType, 31U)},
        {"  startup_priority: 255\n", Set(&Values::startupPriority, 255)},
        {"  cgroup_path: {m: /2, c: /1, m: /0}\n",
         Set(&Values::cgroupPath, {{"c", "/1"}, {"m", "/2"}, {"m", "/0"}})},
        {"  sharepool_groups: {z: rw, a: ro}\n",
         [](Values& values) {
             values.sharepoolGroups = {{"z", "rw"}, {"a", "ro"}};
         }},
    };
    for (const KeyCase& c : cases) {
        Expect(c.keys, c.change);
    }
    EXPECT_EQ(log_.TakeUpTo(LOG_WARNING), Lines());
}

TEST_F(EntryValuesTest, ARejectedValueFallsBackAndTheEntryStaysComplete)
{
    std::string many;
    for (int i = 0; i < 257; ++i) {
        many += std::to_string(i) + ",";
    }
    for (const std::string& keys :
         {std::string("  restart: always\n"), std::string("  startup_priority: 256\n"),
          std::string("  node_type: ''\n"), std::string("  env: [A=1]\n"), std::string("  cgroup_path: x\n"),
          std::string("  sharepool_groups: {g: RO}\n"), std::string("  sharepool_groups: ro\n"),
          std::string("  user_name: no such user here\n"), std::string("  group_name: no such group here\n"),
          "  arguments: [" + many + "]\n"}) {
        Expect(keys, kNothing);
        EXPECT_FALSE(log_.TakeUpTo(LOG_WARNING).empty());
    }
}

TEST_F(EntryValuesTest, ThePathIsStoredAsItWasPassed)
{
    Write("apps.yaml", "a: {bin_path: /a}\n");
    const std::string path = tree_.Path("./apps.yaml");

    EXPECT_TRUE(parser_.CreateApplicationByStartupFile(path, apps_));

    ASSERT_EQ(apps_.size(), 1U);
    EXPECT_EQ(apps_[0].GetCfgPath(), path);
}

TEST_F(EntryValuesTest, RecordsOutliveTheFileAndAliasesReadAsWhatTheyName)
{
    const std::string path = Write("apps.yaml", "a: &common {bin_path: &bin /common, nice: 4}\n"
                                                "b: *common\n"
                                                "c: {bin_path: *bin, so_name: *bin}\n");

    EXPECT_TRUE(parser_.CreateApplicationByStartupFile(path, apps_));

    ASSERT_EQ(Names(), Texts({"a", "b", "c"}));
    EXPECT_EQ(apps_[1].GetBinPath(), "/common");
    EXPECT_EQ(apps_[1].GetNice(), 4);
    EXPECT_EQ(apps_[2].GetSoName(), "/common");
}

} // namespace
