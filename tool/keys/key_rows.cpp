#include "tool/keys/key_rows.h"

#include <nlohmann/json.hpp>

#include "tool/keys/key_forms.h"

namespace tool {

namespace {

using App = ApplicationManifest;
using Group = KeyGroup;

constexpr std::int64_t kMostUnsigned = 4294967295;

template <auto Getter>
Json ValueOf(const App& app)
{
    return (app.*Getter)();
}

Json SharepoolGroups(const App& app)
{
    Json groups = Json::array();
    for (const SharepoolGroupsInfo& group : app.GetSharepoolGroups()) {
        groups.push_back({{"group", group.groupName}, {"permission", group.permission}});
    }
    return groups;
}

// A list of pairs, since a key may come more than once.
Json CgroupPaths(const App& app)
{
    Json paths = Json::array();
    for (const auto& [key, path] : app.GetCGroupPath()) {
        paths.push_back({{"key", key}, {"path", path}});
    }
    return paths;
}

Json Environment(const App& app)
{
    Json names = Json::object();
    for (const auto& [name, value] : app.GetEnvArgv()) {
        names[name] = value;
    }
    return names;
}

std::vector<Key> ProgramKeys()
{
    return {
        Text("bin_path", Group::PROGRAM, "program to start; an entry without it is skipped",
             {"GetBinPath", ValueOf<&App::GetBinPath>})
            .Range("not empty")
            .Needed()
            .Told("entry skipped (w)", "entry skipped (w)")
            .Beyond("any other text is kept; nobody checks that the file exists"),
        Unsigned("uid", Group::OWNER, "id", "1000", "user id to run as", {"GetUid", ValueOf<&App::GetUid>})
            .Told("see Owners", nullptr)
            .Beyond("text: 0; above 2147483647: limits; negative: wraps; -1: entry skipped (w)")
            .StandIns({"user_name"}),
        Account("user_name", "an account of the device", "user to run as; read only without `uid` and `gid`")
            .Told("uid 1000", "uid 1000")
            .Beyond("unknown: uid 1000 (e)"),
        Unsigned("gid", Group::OWNER, "id", "1000", "group id to run as", {"GetGid", ValueOf<&App::GetGid>})
            .Told("see Owners", nullptr)
            .StandIns({"uid", "group_name"}),
        Account("group_name", "a group of the device", "group to run as; read only without `uid` and `gid`")
            .Told("gid 1000", "gid 1000")
            .Beyond("unknown: gid 1000 (e)"),
        Row("restart", KeyKind::POLICY, Group::LIFE, "policy", "what to do when the program ends",
            {"GetRestart", ValueOf<&App::GetRestart>})
            .Reads(R"("no")")
            .Words({"no", "on-failure", "on-forever", "on-until-succeed"})
            .Beyond("any other text: `no` (w)")
            .Warns(),
        Flag("is_so", Group::PROGRAM, "the application is a shared object",
             {"GetIsSo", ValueOf<&App::GetIsSo>}),
        Text("so_name", Group::PROGRAM, "name of the shared object", {"GetSoName", ValueOf<&App::GetSoName>}),
        Text("so_path", Group::PROGRAM, "path of the shared object", {"GetSoPath", ValueOf<&App::GetSoPath>}),
        Text("process_bind_path", Group::PROGRAM, "path of the process it is bound to",
             {"GetProcessBindPath", ValueOf<&App::GetProcessBindPath>}),
        Unsigned("term_time_out", Group::LIFE, "milliseconds", "60000", "time to end after a stop request",
                 {"GetTermTimeOut", ValueOf<&App::GetTermTimeOut>}),
        Flag("is_force_term", Group::LIFE, "end by force", {"GetIsForceTerm", ValueOf<&App::GetIsForceTerm>}),
        Flag("is_ros_node", Group::MIDDLEWARE, "a node of the robotics middleware",
             {"GetIsRosNode", ValueOf<&App::GetIsRosNode>}),
        Flag("is_reporting", Group::SUPERVISION, "the program reports its state",
             {"GetIsReporting", ValueOf<&App::GetIsReporting>}),
        Text("res_group_name", Group::RESOURCES, "resource group",
             {"GetResGroupName", ValueOf<&App::GetResGroupName>}),
        Flag("is_auto_boot", Group::LIFE, "start at boot", {"GetIsAutoBoot", ValueOf<&App::GetIsAutoBoot>}),
        Row("set_rt_prio", KeyKind::SWITCH, Group::SCHEDULING, "switch",
            "real-time scheduling on; stored in lower case", {"GetSetRtPrio", ValueOf<&App::GetSetRtPrio>})
            .Reads(R"("")")
            .Range("`true` in any letter case, or anything else")
            .Told("empty text, off", "empty text, off")
            .Beyond("any other text is kept in lower case, off"),
    };
}

std::vector<Key> CollectionKeys()
{
    return {
        TextList("depends", Group::DEPENDENCIES, "names of entries, as written there",
                 "applications that must have started before",
                 {"GetDependList", ValueOf<&App::GetDependList>})
            .Beyond("name that is no entry: entry dropped (e)"),
        TextList("arguments", Group::PROGRAM, "at most 256 items", "command-line arguments",
                 {"GetArguments", ValueOf<&App::GetArguments>})
            .Limits(0, 256)
            .Beyond("257 items or more: none (w)"),
        Row("core_affinity", KeyKind::NUMBER_LIST, Group::SCHEDULING, "list of numbers", "processor cores",
            {"GetCoreAffinity", ValueOf<&App::GetCoreAffinity>})
            .Reads("[]")
            .Limits(0, kMostUnsigned)
            .Range("each 0 to 4294967295")
            .Beyond("item that is text: 0; item above 4294967295: 4294967295; negative item: wraps"),
        Map("env", Group::PROGRAM, "name to value", "environment variables", {"GetEnvArgv", Environment})
            .Beyond("repeated name: first value; value that is no single value: empty text"),
        Row("sharepool_groups", KeyKind::ACCESS_MAP, Group::RESOURCES, "map",
            "shared memory pool groups and the access to each", {"GetSharepoolGroups", SharepoolGroups})
            .Reads("{}")
            .Range("group to `ro`, `rw` or `alloc`")
            .Words({"ro", "rw", "alloc"})
            .Beyond("other access, or none: group left out (e)")
            .Warns(),
    };
}

std::vector<Key> ProcessKeys()
{
    return {
        Text("security_con", Group::RESOURCES, "security context",
             {"GetSecurityCon", ValueOf<&App::GetSecurityCon>}),
        Signed("nice", Group::SCHEDULING, "nice value; the usual range is not checked",
               {"GetNice", ValueOf<&App::GetNice>})
            .Beyond("text: 0; outside 32 bits: limits; 100 stays 100"),
        Row("device_id", KeyKind::DEVICE_ID, Group::FAMILY, "integer and string",
            "device id as a number, and the same text as a pattern", {"GetVfId", ValueOf<&App::GetVfId>})
            .Reads("-1", "0", "0")
            .Limits(-kMostSigned - 1, kMostSigned)
            .Range("any text")
            .Told("-1, text `-1`", "0, empty text")
            .Beyond("text: 0 or its leading digits, and the text; outside 32 bits: limits"),
        Text("startup_entry_path", Group::PROGRAM, "path of a start description",
             {"GetStartupEntryPath", ValueOf<&App::GetStartupEntryPath>}),
        Text("cpuset", Group::SCHEDULING, "cpuset", {"GetCpuset", ValueOf<&App::GetCpuset>}),
        Flag("heart_beat", Group::SUPERVISION, "heart-beat supervision",
             {"GetHeartBeatSwitch", ValueOf<&App::GetHeartBeatSwitch>})
            .Reads("true", "false", "false"),
        Unsigned("heart_beat_interval", Group::SUPERVISION, "count", "3000",
                 "heart-beat interval; its unit is the process manager's, the default fits milliseconds",
                 {"GetHeartBeatInterval", ValueOf<&App::GetHeartBeatInterval>}),
        Unsigned("heart_beat_count", Group::SUPERVISION, "count", "10",
                 "heart-beat count, read as heart beats that may be missed",
                 {"GetHeartBeatCount", ValueOf<&App::GetHeartBeatCount>}),
        Row("node_type", KeyKind::HEXADECIMAL, Group::MIDDLEWARE, "hexadecimal", "node type",
            {"GetNodeType", ValueOf<&App::GetNodeType>})
            .Reads("0")
            .Limits(0, kMostUnsigned)
            .Range("0 to FFFFFFFF")
            .Beyond("no hexadecimal digits: 0; longer than 32 bits: the low 32 bits; negative: wraps")
            .Warns(),
        Row("startup_priority", KeyKind::PRIORITY, Group::LIFE, "priority",
            "start priority; -1 stands for none", {"GetStartupPriority", ValueOf<&App::GetStartupPriority>})
            .Reads("-1", "-1", "0")
            .Limits(0, 255)
            .Range("0 to 255")
            .Beyond("text: 0; below 0 or above 255: -1 (w)"),
        Flag("isDynamicPara", Group::FAMILY, "the entry's name is a pattern",
             {"GetIsDynamicPara", ValueOf<&App::GetIsDynamicPara>}),
        Text("blkio_cgroup_name", Group::RESOURCES, "block input/output control group",
             {"GetBlkioGroupName", ValueOf<&App::GetBlkioGroupName>}),
        Map("cgroup_path", Group::RESOURCES, "controller to path", "control groups",
            {"GetCGroupPath", CgroupPaths}),
        Text("set_rt_type", Group::SCHEDULING, "real-time scheduling policy, stored as written",
             {"GetSetRtType", ValueOf<&App::GetSetRtType>}),
        Signed("numa_type", Group::SCHEDULING, "NUMA type", {"GetNumaType", ValueOf<&App::GetNumaType>}),
        Signed("process_type", Group::MIDDLEWARE, "kind of process",
               {"GetProcessType", ValueOf<&App::GetProcessType>}),
    };
}

} // namespace

std::vector<Key> StartupRows()
{
    std::vector<Key> rows = ProgramKeys();
    for (const std::vector<Key>& more : {CollectionKeys(), ProcessKeys()}) {
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

std::vector<Key> TopLevelRows()
{
    return {
        TextList("startup_path_list", Group::FILES, "paths",
                 "startup files; `${NAME}` is replaced, then the path is checked"),
        TextList("sub_startup", Group::FILES, "paths",
                 "further files of this kind; opened as written: nothing is replaced, nothing checked"),
    };
}

std::vector<Key> ReplaceRows()
{
    return {
        Map("cfgmgr_env", Group::FILES, "name to value",
            "values of the placeholders in startup files' paths"),
    };
}

} // namespace tool
