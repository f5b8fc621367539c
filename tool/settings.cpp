#include "tool/settings.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/printable.h"

namespace tool {

namespace {

using App = ApplicationManifest;

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

std::vector<Setting> MakeSettings()
{
    return {
        {"name", "GetAppName", {}, [](const App& app) -> Json { return app.GetAppName(); }},
        {"bin_path", "GetBinPath", {"bin_path"}, [](const App& app) -> Json { return app.GetBinPath(); }},
        {"uid", "GetUid", {"uid", "user_name"}, [](const App& app) -> Json { return app.GetUid(); }},
        {"gid", "GetGid", {"gid", "uid", "group_name"}, [](const App& app) -> Json { return app.GetGid(); }},
        {"restart", "GetRestart", {"restart"}, [](const App& app) -> Json { return app.GetRestart(); }},
        {"is_so", "GetIsSo", {"is_so"}, [](const App& app) -> Json { return app.GetIsSo(); }},
        {"so_name", "GetSoName", {"so_name"}, [](const App& app) -> Json { return app.GetSoName(); }},
        {"so_path", "GetSoPath", {"so_path"}, [](const App& app) -> Json { return app.GetSoPath(); }},
        {"process_bind_path",
         "GetProcessBindPath",
         {"process_bind_path"},
         [](const App& app) -> Json { return app.GetProcessBindPath(); }},
        {"term_time_out",
         "GetTermTimeOut",
         {"term_time_out"},
         [](const App& app) -> Json { return app.GetTermTimeOut(); }},
        {"is_force_term",
         "GetIsForceTerm",
         {"is_force_term"},
         [](const App& app) -> Json { return app.GetIsForceTerm(); }},
        {"is_ros_node",
         "GetIsRosNode",
         {"is_ros_node"},
         [](const App& app) -> Json { return app.GetIsRosNode(); }},
        {"is_reporting",
         "GetIsReporting",
         {"is_reporting"},
         [](const App& app) -> Json { return app.GetIsReporting(); }},
        {"res_group_name",
         "GetResGroupName",
         {"res_group_name"},
         [](const App& app) -> Json { return app.GetResGroupName(); }},
        {"is_auto_boot",
         "GetIsAutoBoot",
         {"is_auto_boot"},
         [](const App& app) -> Json { return app.GetIsAutoBoot(); }},
        {"set_rt_prio",
         "GetSetRtPrio",
         {"set_rt_prio"},
         [](const App& app) -> Json { return app.GetSetRtPrio(); }},
        {"depends", "GetDependList", {"depends"}, [](const App& app) -> Json { return app.GetDependList(); }},
        {"arguments",
         "GetArguments",
         {"arguments"},
         [](const App& app) -> Json { return app.GetArguments(); }},
        {"core_affinity",
         "GetCoreAffinity",
         {"core_affinity"},
         [](const App& app) -> Json { return app.GetCoreAffinity(); }},
        {"env", "GetEnvArgv", {"env"}, Environment},
        {"sharepool_groups", "GetSharepoolGroups", {"sharepool_groups"}, SharepoolGroups},
        {"security_con",
         "GetSecurityCon",
         {"security_con"},
         [](const App& app) -> Json { return app.GetSecurityCon(); }},
        {"nice", "GetNice", {"nice"}, [](const App& app) -> Json { return app.GetNice(); }},
        {"device_id", "GetVfId", {"device_id"}, [](const App& app) -> Json { return app.GetVfId(); }},
        {"startup_entry_path",
         "GetStartupEntryPath",
         {"startup_entry_path"},
         [](const App& app) -> Json { return app.GetStartupEntryPath(); }},
        {"cpuset", "GetCpuset", {"cpuset"}, [](const App& app) -> Json { return app.GetCpuset(); }},
        {"heart_beat",
         "GetHeartBeatSwitch",
         {"heart_beat"},
         [](const App& app) -> Json { return app.GetHeartBeatSwitch(); }},
        {"heart_beat_interval",
         "GetHeartBeatInterval",
         {"heart_beat_interval"},
         [](const App& app) -> Json { return app.GetHeartBeatInterval(); }},
        {"heart_beat_count",
         "GetHeartBeatCount",
         {"heart_beat_count"},
         [](const App& app) -> Json { return app.GetHeartBeatCount(); }},
        {"node_type", "GetNodeType", {"node_type"}, [](const App& app) -> Json { return app.GetNodeType(); }},
        {"file", "GetCfgPath", {}, [](const App& app) -> Json { return app.GetCfgPath(); }},
        {"startup_priority",
         "GetStartupPriority",
         {"startup_priority"},
         [](const App& app) -> Json { return app.GetStartupPriority(); }},
        {"is_delay_core_affinity",
         "GetIsDelayCoreAffinity",
         {},
         [](const App& app) -> Json { return app.GetIsDelayCoreAffinity(); }},
        {"device_id_pattern",
         "GetVfIdPattern",
         {"device_id"},
         [](const App& app) -> Json { return app.GetVfIdPattern(); }},
        {"isDynamicPara",
         "GetIsDynamicPara",
         {"isDynamicPara"},
         [](const App& app) -> Json { return app.GetIsDynamicPara(); }},
        {"blkio_cgroup_name",
         "GetBlkioGroupName",
         {"blkio_cgroup_name"},
         [](const App& app) -> Json { return app.GetBlkioGroupName(); }},
        {"cgroup_path", "GetCGroupPath", {"cgroup_path"}, CgroupPaths},
        {"set_rt_type",
         "GetSetRtType",
         {"set_rt_type"},
         [](const App& app) -> Json { return app.GetSetRtType(); }},
        {"numa_type", "GetNumaType", {"numa_type"}, [](const App& app) -> Json { return app.GetNumaType(); }},
        {"process_type",
         "GetProcessType",
         {"process_type"},
         [](const App& app) -> Json { return app.GetProcessType(); }},
    };
}

std::string ItemText(const Json& item)
{
    if (item.is_string()) {
        const std::string text = item.get<std::string>();
        return text.empty() ? "\"\"" : text;
    }
    if (item.is_object() && item.size() == 2 && (item.contains("group") || item.contains("key"))) {
        return fmt::format("{}: {}", ItemText(item.front()), ItemText(item.back()));
    }
    return item.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

const std::vector<Setting>& Settings()
{
    static const std::vector<Setting> kSettings = MakeSettings();
    return kSettings;
}

std::string ValueText(const Json& value)
{
    std::vector<std::string> items;
    if (value.is_array()) {
        for (const Json& item : value) {
            items.push_back(ItemText(item));
        }
        return fmt::format("[{}]", fmt::join(items, ", "));
    }
    if (value.is_object()) {
        for (const auto& [key, item] : value.items()) {
            items.push_back(fmt::format("{}: {}", key, ItemText(item)));
        }
        return fmt::format("{{{}}}", fmt::join(items, ", "));
    }
    return ItemText(value);
}

} // namespace tool
