// Everything that one startup file logs, line by line and in order.

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "tests/support/accounts.h"
#include "tests/support/log_capture.h"
#include "tests/support/startup_tree.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"

using test_support::Lines;
using test_support::LogLine;
using test_support::MissingNodes;

namespace {

const char* const kSecondSummaryFormat =
    "ParseYamlToApplicationManifest finished. appName=%s,binPath=%s,uid=%u,gid=%u,restart=%s,"
    "termTimeOut=%u(ms),isAutoBoot=%d,isForceTerm=%d,isRosNode=%d,isReporting=%d,setRtPri=%s,nice=%d,"
    "resGroupName=%s,dependApps_size=%lu,arguments_size=%lu,codeAffinity_size=%lu,envArgv_size=%lu,"
    "sharepoolGroups_size=%lu,cpuset=%s,nodeType=0x%X,vfId=%d,startupPriority=%d,isDelayCoreAffinity=%d,";
const char* const kThirdSummaryFormat =
    "ParseYamlToApplicationManifest finished. appName=%s,isDynamicPara=%d,blkioGroupName=%s, "
    "cgroupPath=%zu,security_con=%s,setRtType=%s,numaType=%d, hbSwitch=%d, hbInterval=%u, hbCount=%u, "
    "processType=%d";

LogLine AppNameLine(const std::string& name)
{
    return {LOG_INFO, "Get app name when parsing Yaml file, appName=" + name};
}
const LogLine kNoUser = {LOG_INFO, "uid and userName are empty, set uid to default value"};
const LogLine kNoGroup = {LOG_INFO, "gid and groupName are empty, set gid to default value"};

// The three lines of an entry whose values are all defaults but for these.
Lines DefaultSummary(const std::string& name, const std::string& binPath, const std::string& uid,
                     const std::string& gid)
{
    return {{LOG_INFO, "ParseYamlToApplicationManifest startup_entry_path=, size=0"},
            {LOG_INFO, "ParseYamlToApplicationManifest finished. appName=" + name + ",binPath=" + binPath +
                           ",uid=" + uid + ",gid=" + gid +
                           ",restart=no,termTimeOut=60000(ms),isAutoBoot=0,isForceTerm=0,isRosNode=0,"
                           "isReporting=0,setRtPri=,nice=0,resGroupName=,dependApps_size=0,"
                           "arguments_size=0,codeAffinity_size=0,envArgv_size=0,sharepoolGroups_size=0,"
                           "cpuset=,nodeType=0x0,vfId=-1,startupPriority=-1,isDelayCoreAffinity=0,"},
            {LOG_INFO, "ParseYamlToApplicationManifest finished. appName=" + name +
                           ",isDynamicPara=0,blkioGroupName=, cgroupPath=0,security_con=,setRtType=,"
                           "numaType=0, hbSwitch=1, hbInterval=3000, hbCount=10, processType=0"}};
}

void Append(Lines& lines, const Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

// The keys that are looked up behind the ownership keys, in order; "device_id" twice.
const char* const kKeysBehindOwnership[] = {
    "restart",
    "is_so",
    "so_name",
    "so_path",
    "process_bind_path",
    "term_time_out",
    "is_force_term",
    "is_ros_node",
    "is_reporting",
    "res_group_name",
    "is_auto_boot",
    "set_rt_prio",
    "depends",
    "arguments",
    "core_affinity",
    "env",
    "sharepool_groups",
    "security_con",
    "nice",
    "device_id",
    "startup_entry_path",
    "cpuset",
    "heart_beat",
    "heart_beat_interval",
    "heart_beat_count",
    "node_type",
    "startup_priority",
    "device_id",
    "isDynamicPara",
    "blkio_cgroup_name",
    "cgroup_path",
    "set_rt_type",
    "numa_type",
    "process_type",
};

class EntryLogTest : public test_support::StartupTreeFixture {
protected:
    // All lines of a file with this content.
    Lines LogOf(const std::string& content)
    {
        path_ = Write("apps.yaml", content);
        parser_.CreateApplicationByStartupFile(path_, apps_);
        return log_.Take();
    }

    LogLine LoadLine() const { return {LOG_INFO, "Load sub startup file=" + path_}; }

    static void ExpectLines(const Lines& lines, const Lines& expected)
    {
        for (std::size_t i = 0; i < lines.size() && i < expected.size(); ++i) {
            EXPECT_EQ(lines[i], expected[i]) << "line " << i;
        }
        EXPECT_EQ(lines.size(), expected.size());
    }

    std::string path_;
};

TEST_F(EntryLogTest, ACompleteEntryLogsTheseLines)
{
    test_support::Accounts accounts;
    accounts.AddUser("alice", 501);
    accounts.AddGroup("staff", 50);

    const Lines lines = LogOf("camera:\n"
                              "  process_type: 6\n" // the file's order does not matter
                              "  bin_path: /bin/camera\n"
                              "  user_name: alice\n"
                              "  group_name: staff\n"
                              "  restart: on-failure\n"
                              "  term_time_out: -2\n"
                              "  is_force_term: true\n"
                              "  is_ros_node: true\n"
                              "  is_reporting: true\n"
                              "  res_group_name: res\n"
                              "  is_auto_boot: true\n"
                              "  set_rt_prio: FIFO\n"
                              "  depends: [b, a, b]\n"
                              "  arguments: [-a, -b, -c]\n"
                              "  core_affinity: [0, 1, 2, 3]\n"
                              "  env: {A: 1, B: 2, C: 3, D: 4, E: 5}\n"
                              "  sharepool_groups: {g: ro}\n"
                              "  security_con: u:r\n"
                              "  nice: -5\n"
                              "  device_id: 7\n"
                              "  startup_entry_path: /entry\n"
                              "  cpuset: 0-1\n"
                              "  heart_beat: false\n"
                              "  heart_beat_interval: -1\n"
                              "  heart_beat_count: 3\n"
                              "  node_type: beef\n"
                              "  startup_priority: 9\n"
                              "  isDynamicPara: true\n"
                              "  blkio_cgroup_name: blk\n"
                              "  cgroup_path: {memory: /m, cpu: /c}\n"
                              "  set_rt_type: RR\n"
                              "  numa_type: 2\n");

    ExpectLines(
        lines,
        {LoadLine(),
         AppNameLine("camera"),
         {LOG_INFO, "override uid:501, userName=alice"},
         {LOG_INFO, "override gid:50, groupName=staff"},
         {LOG_INFO, "cgroup path info:memory:/m, cpu:/c, "},
         {LOG_INFO, "ParseYamlToApplicationManifest startup_entry_path=/entry, size=6"},
         {LOG_INFO, "ParseYamlToApplicationManifest finished. appName=camera,binPath=/bin/camera,uid=501,"
                    "gid=50,restart=on-failure,termTimeOut=4294967294(ms),isAutoBoot=1,isForceTerm=1,"
                    "isRosNode=1,isReporting=1,setRtPri=fifo,nice=-5,resGroupName=res,dependApps_size=2,"
                    "arguments_size=3,codeAffinity_size=4,envArgv_size=5,sharepoolGroups_size=1,"
                    "cpuset=0-1,nodeType=0xBEEF,vfId=7,startupPriority=9,isDelayCoreAffinity=0,"},
         {LOG_INFO, "ParseYamlToApplicationManifest finished. appName=camera,isDynamicPara=1,"
                    "blkioGroupName=blk, cgroupPath=2,security_con=u:r,setRtType=RR,numaType=2, hbSwitch=0, "
                    "hbInterval=4294967295, hbCount=3, processType=6"}});
    ASSERT_EQ(lines.size(), 8U);
    EXPECT_EQ(lines[1].format, "Get app name when parsing Yaml file, appName=%s");
    EXPECT_EQ(lines[4].format, "cgroup path info:%s");
    EXPECT_EQ(lines[5].format, "ParseYamlToApplicationManifest startup_entry_path=%s, size=%zu");
    EXPECT_EQ(lines[6].format, kSecondSummaryFormat);
    EXPECT_EQ(lines[7].format, kThirdSummaryFormat);
}

TEST_F(EntryLogTest, AnEntryOfDefaultsLogsItsDefaults)
{
    const Lines lines = LogOf("app: {bin_path: /bin/app}\n");

    Lines expected = {LoadLine(), AppNameLine("app"), kNoUser, kNoGroup};
    Append(expected, DefaultSummary("app", "/bin/app", "1000", "1000"));
    ExpectLines(lines, expected);
}

TEST_F(EntryLogTest, AnIncompleteEntryWithEveryRejectedValueLogsTheseLinesAndItsSummary)
{
    test_support::Accounts accounts;
    std::string many;
    for (int i = 0; i < 257; ++i) {
        many += "x,";
    }
    const Lines lines = LogOf("broken:\n"
                              "  cgroup_path: [a]\n"
                              "  startup_priority: -1\n"
                              "  node_type:\n"
                              "  sharepool_groups: {g1: ro, g2: RW, g3: }\n"
                              "  env: [A=1]\n"
                              "  core_affinity: 3\n"
                              "  arguments: [" +
                              many +
                              "]\n"
                              "  depends: a\n"
                              "  restart: always\n"
                              "  group_name: nogroup\n"
                              "  user_name: nobody\n"
                              "next: {bin_path: /n}\n");

    Lines expected = {
        LoadLine(),
        AppNameLine("broken"),
        {LOG_ERR, "getpwnam failed, userName=nobody"},
        {LOG_ERR, "getgrnam failed, groupName=nogroup"},
        {LOG_WARNING, "ParseYamlToApplicationManifest restart cfg is invalid, set default value !"},
        {LOG_WARNING, "ParseYamlToApplicationManifest arguments:0 is beyond max nums"},
        test_support::ArrayIsNoMapping(),
        {LOG_WARNING, "no env config!"},
        {LOG_ERR, "ParseYamlToApplicationManifest parse sharepool_group config=RW is illegal"},
        {LOG_ERR, "ParseYamlToApplicationManifest parse sharepool_group config= is illegal"},
        {LOG_WARNING, "ParseYamlToApplicationManifest node_type is null !"},
        {LOG_WARNING, "ParseYamlToApplicationManifest GetStartupPriority=-1 is not in 0-255"},
        test_support::ArrayIsNoMapping(),
        {LOG_WARNING, "no cgroups config!"},
        {LOG_WARNING, "cfg isn't complete:appName=broken, binPath=, uid=1000"},
    };
    Lines summary = DefaultSummary("broken", "", "1000", "1000");
    const std::string none = "sharepoolGroups_size=0";
    summary[1].text.replace(summary[1].text.find(none), none.size(), "sharepoolGroups_size=1");
    Append(expected, summary);
    Append(expected, {AppNameLine("next"), kNoUser, kNoGroup});
    Append(expected, DefaultSummary("next", "/n", "1000", "1000"));
    ExpectLines(lines, expected);
}

TEST_F(EntryLogTest, AnEntryThatIsNoMappingIsWarnedOfOnceForEachLookUp)
{
    for (const char* entry : {"text", "[a, b]", "''"}) {
        SCOPED_TRACE(entry);
        const Lines lines = LogOf(std::string("app: ") + entry + "\n");

        using test_support::NoMappingFor;
        Lines expected = {LoadLine(),
                          AppNameLine("app"),
                          NoMappingFor("bin_path"),
                          NoMappingFor("uid"),
                          NoMappingFor("gid"),
                          NoMappingFor("user_name"),
                          kNoUser,
                          NoMappingFor("group_name"),
                          kNoGroup};
        for (const char* key : kKeysBehindOwnership) {
            expected.push_back(NoMappingFor(key));
        }
        expected.push_back({LOG_WARNING, "cfg isn't complete:appName=app, binPath=, uid=1000"});
        Append(expected, DefaultSummary("app", "", "1000", "1000"));
        ExpectLines(lines, expected);
    }
    EXPECT_TRUE(apps_.empty());
}

// A pair without its nodes hides every key behind it and no key before it.
struct MissingCase {
    const char* entry;
    std::vector<const char*> hiddenOwnership; // the look-ups that fail, in order
    bool looksForNames;
    const char* uid;
    const char* gid;
};

TEST_F(EntryLogTest, AMissingNodeInAnEntryIsNamedOnceForEachLookUpBehindIt)
{
    using test_support::MissingNodeBefore;
    const MissingNodes missing("GONE");
    const MissingCase cases[] = {
        {"{bin_path: /b, GONE: 1, uid: 7, nice: 4}", {"uid", "gid"}, true, "1000", "1000"},
        {"{bin_path: /b, x: GONE, uid: 7, nice: 4}", {"uid", "gid"}, true, "1000", "1000"},
        {"{bin_path: /b, uid: GONE}", {"uid", "gid"}, true, "1000", "1000"},
        {"{bin_path: /b, uid: 7, GONE: 1, gid: 8}", {"gid"}, false, "7", "7"},
        {"{bin_path: /b, gid: 8, GONE: 1, uid: 7}", {"uid", "uid"}, false, "1000", "8"},
        {"{gid: 8, bin_path: /b, uid: 7, GONE: 1}", {}, false, "7", "8"},
    };
    for (const MissingCase& c : cases) {
        SCOPED_TRACE(c.entry);
        const Lines lines = LogOf(std::string("app: ") + c.entry + "\n");

        Lines expected = {LoadLine(), AppNameLine("app")};
        for (const char* key : c.hiddenOwnership) {
            expected.push_back(MissingNodeBefore(key));
        }
        if (c.looksForNames) {
            Append(expected,
                   {MissingNodeBefore("user_name"), kNoUser, MissingNodeBefore("group_name"), kNoGroup});
        }
        for (const char* key : kKeysBehindOwnership) {
            expected.push_back(MissingNodeBefore(key));
        }
        Append(expected, DefaultSummary("app", "/b", c.uid, c.gid));
        ExpectLines(lines, expected);
    }
}

TEST_F(EntryLogTest, AMissingNodeInFrontHidesEveryKey)
{
    const MissingNodes missing("GONE");

    const Lines lines = LogOf("app: {GONE: 1, bin_path: /b}\n");

    ASSERT_GT(lines.size(), 3U);
    EXPECT_EQ(lines[2], test_support::MissingNodeBefore("bin_path"));
    EXPECT_EQ(lines[lines.size() - 4].text, "cfg isn't complete:appName=app, binPath=, uid=1000");
    EXPECT_TRUE(apps_.empty());
}

TEST_F(EntryLogTest, AnEntryWhoseKeyIsNoScalarHasAnEmptyName)
{
    const Lines lines = LogOf("? [a]\n: {bin_path: /b}\n");

    Lines expected = {LoadLine(),
                      AppNameLine(""),
                      kNoUser,
                      kNoGroup,
                      {LOG_WARNING, "cfg isn't complete:appName=, binPath=/b, uid=1000"}};
    Append(expected, DefaultSummary("", "/b", "1000", "1000"));
    ExpectLines(lines, expected);
}

TEST_F(EntryLogTest, TheLengthOfTheEntryPathIsInBytes)
{
    const Lines lines = LogOf("a: {bin_path: /a, uid: 1, startup_entry_path: \"\\xe4\"}\n");

    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[2].text, "ParseYamlToApplicationManifest startup_entry_path=\xc3\xa4, size=2");
}

} // namespace
