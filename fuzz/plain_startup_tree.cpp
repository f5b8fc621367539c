#include "fuzz/plain_startup_tree.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>
#include <set>
#include <system_error>

#include <syslog.h>

#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "tests/support/placeholder_model.h"

namespace {

using ProcMgr::KvsTypeYaml;
using ProcMgr::YamlParser;

std::vector<std::string> PathsUnder(const KvsTypeYaml& node, const std::string& key)
{
    KvsTypeYaml sub;
    return node.GetSubKvs(key, sub) ? sub.GetSequenceString() : std::vector<std::string>();
}

std::size_t SizeOf(const std::string& path)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    return error ? 0 : static_cast<std::size_t>(size);
}

std::string Lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

} // namespace

namespace fuzz {

bool PlainStartupTree::Walk(const std::string& path, const ReplaceData& replaceData)
{
    std::vector<std::string> pending = {path};
    for (int count = 1; !pending.empty(); ++count) {
        const std::string current = pending.back();
        pending.pop_back();
        KvsTypeYaml node;
        if (node.InitYamlNode(current) && !AddPaths(node, replaceData, pending)) {
            return false;
        }
        bytesLoaded += SizeOf(current);
        if (count == 200) {
            syslog(LOG_ERR, "Load more than %u sub startup files!", 200U);
            startupPaths.clear();
            result = PARSE_ERR_TOO_MANY_SUB_STARTUP;
            return true;
        }
    }
    if (startupPaths.empty()) {
        syslog(LOG_ERR, "No startup file to load!");
        result = PARSE_ERR_NO_STARTUP_FILE;
    }
    return true;
}

bool PlainStartupTree::AddPaths(const KvsTypeYaml& node, const ReplaceData& replaceData,
                                std::vector<std::string>& pending)
{
    for (const std::string& startupPath : PathsUnder(node, "startup_path_list")) {
        const std::optional<std::string> replaced = test_support::ReplacedIfItEnds(startupPath, replaceData);
        if (!replaced || startupPaths.size() == kMostStartupFiles) {
            return false;
        }
        startupPaths.push_back(*replaced);
    }
    const std::vector<std::string> subs = PathsUnder(node, "sub_startup");
    pending.insert(pending.end(), subs.rbegin(), subs.rend());
    reads += subs.size();
    return true;
}

void PlainStartupTree::ReadStartupFiles()
{
    for (const std::string& path : startupPaths) {
        ReadStartupFile(path);
    }
}

void PlainStartupTree::ReadStartupFile(const std::string& path)
{
    if (path.find("..") != std::string::npos) {
        syslog(LOG_ERR, "CheckInputPath path=%s failed, is not illegal path", path.c_str());
        return;
    }
    KvsTypeYaml root;
    if (path.empty() || std::string("/etcadsvr").find(path.front()) == std::string::npos ||
        !root.InitYamlNode(path)) {
        return;
    }
    bytesLoaded += SizeOf(path);
    std::vector<KvsTypeYaml> entries;
    if (!root.GetArray(entries)) {
        syslog(LOG_WARNING, "%s is invalid yaml file!", path.c_str());
    }
    syslog(LOG_INFO, "Load sub startup file=%s", path.c_str());
    for (const KvsTypeYaml& entry : entries) {
        ReadEntry(entry, path);
    }
}

// The readers in the order of their keys, which shows in the log.
void PlainStartupTree::ReadEntry(const KvsTypeYaml& entry, const std::string& path)
{
    const YamlParser parser;
    const auto text = [&](const char* key) { return parser.GetStrValue(entry, key, ""); };
    const auto flag = [&](const char* key) { return parser.GetBoolValue(entry, key, false); };
    const std::string appName = parser.GetAppName(entry);
    const std::string binPath = text("bin_path");
    std::uint32_t uid = 1000;
    std::uint32_t gid = 1000;
    parser.GetOwnership(entry, uid, gid);
    const std::string restart = parser.GetRestart(entry);
    const bool isSo = flag("is_so");
    const std::string soName = text("so_name");
    const std::string soPath = text("so_path");
    const std::string processBindPath = text("process_bind_path");
    const auto termTimeOut = static_cast<std::uint32_t>(parser.GetIntValue(entry, "term_time_out", 60000));
    const bool isForceTerm = flag("is_force_term");
    const bool isRosNode = flag("is_ros_node");
    const bool isReporting = flag("is_reporting");
    const std::string resGroupName = text("res_group_name");
    const bool isAutoBoot = flag("is_auto_boot");
    const std::string setRtPrio = Lowered(text("set_rt_prio"));
    std::set<std::string> depends;
    parser.GetDependApps(depends, entry);
    std::vector<std::string> arguments;
    parser.GetArguments(arguments, entry);
    std::vector<std::uint32_t> coreAffinity;
    parser.GetCodeAffinity(coreAffinity, entry);
    std::map<std::string, std::string> env;
    parser.GetEnvArgv(env, entry);
    std::vector<SharepoolGroupsInfo> groups;
    parser.GetSharepoolGroups(groups, entry);
    const std::string securityCon = text("security_con");
    const std::int32_t nice = parser.GetIntValue(entry, "nice", 0);
    const std::int32_t vfId = parser.GetIntValue(entry, "device_id", -1);
    const std::string startupEntryPath = text("startup_entry_path");
    const std::string cpuset = text("cpuset");
    const bool heartBeat = parser.GetBoolValue(entry, "heart_beat", true);
    const std::uint32_t interval = parser.GetUintValue(entry, "heart_beat_interval", 3000);
    const std::uint32_t beats = parser.GetUintValue(entry, "heart_beat_count", 10);
    const std::uint32_t nodeType = parser.GetNodeType(entry);
    const std::int32_t priority = parser.GetStartupPriority(entry);
    const bool isDelayed = parser.GetIsDelayCoreAffinity(entry);
    const std::string vfIdPattern = parser.GetStrValue(entry, "device_id", "-1");
    const bool isDynamicPara = parser.GetIsDynamicPara(entry);
    const std::string blkio = text("blkio_cgroup_name");
    std::multimap<std::string, std::string> cgroups;
    parser.GetCGroupPath(cgroups, entry);
    const std::string setRtType = text("set_rt_type");
    const std::int32_t numaType = parser.GetIntValue(entry, "numa_type", 0);
    const std::int32_t processType = parser.GetIntValue(entry, "process_type", 0);
    reads += 40 + depends.size() + arguments.size() + coreAffinity.size() + env.size() + groups.size() +
             cgroups.size();

    if (appName.empty() || binPath.empty() || uid == 0xFFFFFFFF) {
        syslog(LOG_WARNING, "cfg isn't complete:appName=%s, binPath=%s, uid=%u", appName.c_str(),
               binPath.c_str(), uid);
    } else {
        apps.emplace_back(appName, binPath, depends, uid, arguments, restart, isSo, soName, soPath,
                          processBindPath, termTimeOut, isForceTerm, isRosNode, isReporting, coreAffinity,
                          resGroupName, isAutoBoot, env, gid, setRtPrio, groups, securityCon, nice,
                          startupEntryPath, cpuset, heartBeat, interval, beats, nodeType, vfId, priority,
                          isDelayed, vfIdPattern, isDynamicPara, blkio, cgroups, setRtType, numaType,
                          processType, path);
    }
    syslog(LOG_INFO, "ParseYamlToApplicationManifest startup_entry_path=%s, size=%zu",
           startupEntryPath.c_str(), startupEntryPath.size());
    syslog(LOG_INFO,
           "ParseYamlToApplicationManifest finished. appName=%s,binPath=%s,uid=%u,gid=%u,restart=%s,"
           "termTimeOut=%u(ms),isAutoBoot=%d,isForceTerm=%d,isRosNode=%d,isReporting=%d,setRtPri=%s,nice=%d,"
           "resGroupName=%s,dependApps_size=%zu,arguments_size=%zu,codeAffinity_size=%zu,envArgv_size=%zu,"
           "sharepoolGroups_size=%zu,cpuset=%s,nodeType=0x%X,vfId=%d,startupPriority=%d,"
           "isDelayCoreAffinity=%d,",
           appName.c_str(), binPath.c_str(), uid, gid, restart.c_str(), termTimeOut, isAutoBoot, isForceTerm,
           isRosNode, isReporting, setRtPrio.c_str(), nice, resGroupName.c_str(), depends.size(),
           arguments.size(), coreAffinity.size(), env.size(), groups.size(), cpuset.c_str(), nodeType, vfId,
           priority, isDelayed);
    syslog(LOG_INFO,
           "ParseYamlToApplicationManifest finished. appName=%s,isDynamicPara=%d,blkioGroupName=%s, "
           "cgroupPath=%zu,security_con=%s,setRtType=%s,numaType=%d, hbSwitch=%d, hbInterval=%u, hbCount=%u, "
           "processType=%d",
           appName.c_str(), isDynamicPara, blkio.c_str(), cgroups.size(), securityCon.c_str(),
           setRtType.c_str(), numaType, heartBeat, interval, beats, processType);
}

} // namespace fuzz
