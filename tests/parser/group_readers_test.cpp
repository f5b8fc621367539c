// Cgroup paths and sharepool groups of an entry.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "tests/support/log_capture.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using test_support::Lines;
using test_support::Load;
using test_support::LogLine;
using test_support::MissingNodes;

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

const LogLine kNoCgroups = {LOG_WARNING, "no cgroups config!"};
const LogLine kNoSharepools = {LOG_WARNING,
                               "ParseYamlToApplicationManifest parse sharepool_group config is not array !"};

class GroupReadersTest : public testing::Test {
protected:
    // Appends the entry's groups to those read before and gives them all.
    Pairs Cgroups(const std::string& entry)
    {
        parser_.GetCGroupPath(cgroups_, Load(entry));
        return Pairs(cgroups_.begin(), cgroups_.end());
    }
    Pairs Sharepools(const std::string& entry)
    {
        parser_.GetSharepoolGroups(sharepools_, Load(entry));
        Pairs pairs;
        for (const SharepoolGroupsInfo& group : sharepools_) {
            pairs.emplace_back(group.groupName, group.permission);
        }
        return pairs;
    }

    const ProcMgr::YamlParser parser_{};
    test_support::LogCapture log_;
    std::multimap<std::string, std::string> cgroups_;
    std::vector<SharepoolGroupsInfo> sharepools_;
};

TEST_F(GroupReadersTest, CgroupsAreStoredByKeyAndLoggedInTheFilesOrder)
{
    EXPECT_EQ(Cgroups("{cgroup_path: {memory: /sys/b, cpu: /sys/a}}"),
              Pairs({{"cpu", "/sys/a"}, {"memory", "/sys/b"}}));

    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_INFO, "cgroup path info:memory:/sys/b, cpu:/sys/a, "}}));
    EXPECT_EQ(lines[0].format, "cgroup path info:%s");
}

TEST_F(GroupReadersTest, RepeatedCgroupKeysAreAllKeptInTheirOrder)
{
    Cgroups("{cgroup_path: {m: /0}}");

    EXPECT_EQ(Cgroups("{cgroup_path: {m: /2, c: /z, m: /1, c: [x], '': }}"),
              Pairs({{"", ""}, {"c", "/z"}, {"c", ""}, {"m", "/0"}, {"m", "/2"}, {"m", "/1"}}));

    EXPECT_EQ(log_.Take(), Lines({{LOG_INFO, "cgroup path info:m:/0, "},
                                  {LOG_INFO, "cgroup path info:m:/2, c:/z, m:/1, c:, :, "}}));
}

TEST_F(GroupReadersTest, APercentSignInACgroupIsOnlyText)
{
    EXPECT_EQ(Cgroups("{cgroup_path: {'%s': '%n%d'}}"), Pairs({{"%s", "%n%d"}}));

    EXPECT_EQ(log_.Take(), Lines({{LOG_INFO, "cgroup path info:%s:%n%d, "}}));
}

TEST_F(GroupReadersTest, AnEmptyMappingOfCgroupsLogsAnEmptyText)
{
    EXPECT_EQ(Cgroups("{cgroup_path: {}}"), Pairs());

    EXPECT_EQ(log_.Take(), Lines({{LOG_INFO, "cgroup path info:"}}));
}

TEST_F(GroupReadersTest, CgroupsThatAreNoMappingAreWarnedOf)
{
    for (const char* entry : {"{cgroup_path: [a, b]}", "{cgroup_path: a}", "{cgroup_path: }"}) {
        SCOPED_TRACE(entry);
        EXPECT_EQ(Cgroups(entry), Pairs());
        EXPECT_EQ(log_.Take(), Lines({test_support::ArrayIsNoMapping(), kNoCgroups}));
    }
}

TEST_F(GroupReadersTest, AMissingCgroupAddsNone)
{
    const MissingNodes missing("GONE");

    EXPECT_EQ(Cgroups("{cgroup_path: {a: /a, b: GONE}}"), Pairs());
    EXPECT_EQ(Cgroups("{GONE: 1, cgroup_path: {a: /a}}"), Pairs());
    EXPECT_EQ(Cgroups("text"), Pairs());

    EXPECT_EQ(log_.Take(), Lines({test_support::MissingNodeInArray(), kNoCgroups,
                                  test_support::MissingNodeBefore("cgroup_path"),
                                  test_support::NoMappingFor("cgroup_path")}));
}

TEST_F(GroupReadersTest, SharepoolGroupsAreAppendedInTheFilesOrder)
{
    Sharepools("{sharepool_groups: {g0: ro}}");

    EXPECT_EQ(Sharepools("{sharepool_groups: {z: alloc, a: rw, z: ro, '': rw}}"),
              Pairs({{"g0", "ro"}, {"z", "alloc"}, {"a", "rw"}, {"z", "ro"}, {"", "rw"}}));

    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(GroupReadersTest, AnyOtherAccessIsAnErrorAndThatPairIsSkipped)
{
    EXPECT_EQ(Sharepools("{sharepool_groups: {g1: ro, g2: RW, g3: alloc, g4: , g5: [ro], g6: 'ro ', g7: r, "
                         "g8: roo, g9: rw}}"),
              Pairs({{"g1", "ro"}, {"g3", "alloc"}, {"g9", "rw"}}));

    const Lines lines = log_.Take();
    const std::string before = "ParseYamlToApplicationManifest parse sharepool_group config=";
    ASSERT_EQ(lines, Lines({{LOG_ERR, before + "RW is illegal"},
                            {LOG_ERR, before + " is illegal"},
                            {LOG_ERR, before + " is illegal"},
                            {LOG_ERR, before + "ro  is illegal"},
                            {LOG_ERR, before + "r is illegal"},
                            {LOG_ERR, before + "roo is illegal"}}));
    EXPECT_EQ(lines[0].format, before + "%s is illegal");
}

TEST_F(GroupReadersTest, SharepoolGroupsThatAreNoMappingAreWarnedOf)
{
    for (const char* entry :
         {"{sharepool_groups: alloc}", "{sharepool_groups: [ro]}", "{sharepool_groups: }"}) {
        SCOPED_TRACE(entry);
        EXPECT_EQ(Sharepools(entry), Pairs());
        EXPECT_EQ(log_.Take(), Lines({test_support::ArrayIsNoMapping(), kNoSharepools}));
    }
}

TEST_F(GroupReadersTest, AMissingSharepoolGroupAddsNone)
{
    const MissingNodes missing("GONE");

    EXPECT_EQ(Sharepools("{sharepool_groups: {a: ro, GONE: rw}}"), Pairs());
    EXPECT_EQ(Sharepools("{GONE: 1, sharepool_groups: {a: ro}}"), Pairs());
    EXPECT_EQ(Sharepools("text"), Pairs());

    EXPECT_EQ(log_.Take(), Lines({test_support::MissingNodeInArray(), kNoSharepools,
                                  test_support::MissingNodeBefore("sharepool_groups"),
                                  test_support::NoMappingFor("sharepool_groups")}));
}

TEST_F(GroupReadersTest, AnEntryWithNeitherKeyIsSilent)
{
    EXPECT_EQ(Cgroups("{other: {a: b}}"), Pairs());
    EXPECT_EQ(Sharepools("{other: {a: ro}}"), Pairs());
    EXPECT_EQ(Sharepools("{sharepool_groups: {}}"), Pairs());

    EXPECT_EQ(log_.Take(), Lines());
}

} // namespace
