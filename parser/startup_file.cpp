#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <syslog.h>

#include "manifest/entry_values.h"
#include "parser/entry_keys.h"
#include "parser/entry_lookup.h"
#include "parser/entry_readers.h"
#include "startplan/application_manifest.h"
#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "yaml/keep_errno.h"
#include "yaml/node_ref.h"

namespace {

using namespace startplan;

constexpr std::array<const char*, 3> kAllowedPrefixes = {"/etc/", "/ads/", "/var/"};

void LowerCase(std::string& text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
}

// Every key in the order in which it is read, since readers log and that order shows.
EntryValues ReadEntry(const PairRef& pair, yaml_document_t* document, const std::string& path)
{
    const EntryLookup entry(NodeRef{document, pair.value});
    EntryValues values;
    LogAppName(pair.key.data());
    values.appName = pair.key;
    values.binPath = StrOr(entry.Find(EntryKey::BIN_PATH), "");
    values.uid = kDefaultUid;
    values.gid = kDefaultGid;
    ReadOwnership(entry, values.uid, values.gid);
    values.restart = ReadRestart(entry.Find(EntryKey::RESTART));
    values.isSo = BoolOr(entry.Find(EntryKey::IS_SO), false);
    values.soName = StrOr(entry.Find(EntryKey::SO_NAME), "");
    values.soPath = StrOr(entry.Find(EntryKey::SO_PATH), "");
    values.processBindPath = StrOr(entry.Find(EntryKey::PROCESS_BIND_PATH), "");
    // Signed in the file and unsigned in the record: a negative time-out becomes a very long one.
    values.termTimeOut =
        static_cast<std::uint32_t>(IntOr(entry.Find(EntryKey::TERM_TIME_OUT), kDefaultTermTimeOutMs));
    values.isForceTerm = BoolOr(entry.Find(EntryKey::IS_FORCE_TERM), false);
    values.isRosNode = BoolOr(entry.Find(EntryKey::IS_ROS_NODE), false);
    values.isReporting = BoolOr(entry.Find(EntryKey::IS_REPORTING), false);
    values.resGroupName = StrOr(entry.Find(EntryKey::RES_GROUP_NAME), "");
    values.isAutoBoot = BoolOr(entry.Find(EntryKey::IS_AUTO_BOOT), false);
    values.setRtPrio = StrOr(entry.Find(EntryKey::SET_RT_PRIO), "");
    LowerCase(values.setRtPrio);
    ReadDependencies(values.dependList, entry.Find(EntryKey::DEPENDS));
    ReadArguments(values.arguments, entry.Find(EntryKey::ARGUMENTS));
    ReadCoreAffinity(values.coreAffinity, entry.Find(EntryKey::CORE_AFFINITY));
    ReadEnvironment(values.envArgv, entry.Find(EntryKey::ENV));
    ReadSharepoolGroups(values.sharepoolGroups, entry.Find(EntryKey::SHAREPOOL_GROUPS));
    values.securityCon = StrOr(entry.Find(EntryKey::SECURITY_CON), "");
    values.nice = IntOr(entry.Find(EntryKey::NICE), 0);
    values.vfId = IntOr(entry.Find(EntryKey::DEVICE_ID), kDefaultVfId);
    values.startupEntryPath = StrOr(entry.Find(EntryKey::STARTUP_ENTRY_PATH), "");
    values.cpuset = StrOr(entry.Find(EntryKey::CPUSET), "");
    values.heartBeatSwitch = BoolOr(entry.Find(EntryKey::HEART_BEAT), kDefaultHeartBeat);
    values.heartBeatInterval = UintOr(entry.Find(EntryKey::HEART_BEAT_INTERVAL), kDefaultHeartBeatInterval);
    values.heartBeatCount = UintOr(entry.Find(EntryKey::HEART_BEAT_COUNT), kDefaultHeartBeatCount);
    values.nodeType = ReadNodeType(entry.Find(EntryKey::NODE_TYPE));
    values.cfgPath = path;
    values.startupPriority = ReadStartupPriority(entry.Find(EntryKey::STARTUP_PRIORITY));
    values.isDelayCoreAffinity = false; // no key sets it
    values.vfIdPattern = StrOr(entry.Find(EntryKey::DEVICE_ID), kDefaultVfIdPattern);
    values.isDynamicPara = BoolOr(entry.Find(EntryKey::IS_DYNAMIC_PARA), false);
    values.blkioGroupName = StrOr(entry.Find(EntryKey::BLKIO_CGROUP_NAME), "");
    ReadCgroupPaths(values.cgroupPath, entry.Find(EntryKey::CGROUP_PATH));
    values.setRtType = StrOr(entry.Find(EntryKey::SET_RT_TYPE), "");
    values.numaType = IntOr(entry.Find(EntryKey::NUMA_TYPE), 0);
    values.processType = IntOr(entry.Find(EntryKey::PROCESS_TYPE), 0);
    return values;
}

bool IsComplete(const EntryValues& values)
{
    return !values.appName.empty() && !values.binPath.empty() && values.uid != kInvalidUid;
}

void LogSummary(const EntryValues& values)
{
    const auto count = [](const auto& container) { return static_cast<unsigned long>(container.size()); };
    const KeepErrno keep;
    syslog(LOG_INFO, "ParseYamlToApplicationManifest startup_entry_path=%s, size=%zu",
           values.startupEntryPath.c_str(), values.startupEntryPath.size());
    syslog(LOG_INFO,
           "ParseYamlToApplicationManifest finished. appName=%s,binPath=%s,uid=%u,gid=%u,restart=%s,"
           "termTimeOut=%u(ms),isAutoBoot=%d,isForceTerm=%d,isRosNode=%d,isReporting=%d,setRtPri=%s,nice=%d,"
           "resGroupName=%s,dependApps_size=%lu,arguments_size=%lu,codeAffinity_size=%lu,envArgv_size=%lu,"
           "sharepoolGroups_size=%lu,cpuset=%s,nodeType=0x%X,vfId=%d,startupPriority=%d,"
           "isDelayCoreAffinity=%d,",
           values.appName.c_str(), values.binPath.c_str(), values.uid, values.gid, values.restart.c_str(),
           values.termTimeOut, values.isAutoBoot, values.isForceTerm, values.isRosNode, values.isReporting,
           values.setRtPrio.c_str(), values.nice, values.resGroupName.c_str(), count(values.dependList),
           count(values.arguments), count(values.coreAffinity), count(values.envArgv),
           count(values.sharepoolGroups), values.cpuset.c_str(), values.nodeType, values.vfId,
           values.startupPriority, values.isDelayCoreAffinity);
    syslog(LOG_INFO,
           "ParseYamlToApplicationManifest finished. appName=%s,isDynamicPara=%d,blkioGroupName=%s, "
           "cgroupPath=%zu,security_con=%s,setRtType=%s,numaType=%d, hbSwitch=%d, hbInterval=%u, hbCount=%u, "
           "processType=%d",
           values.appName.c_str(), values.isDynamicPara, values.blkioGroupName.c_str(),
           values.cgroupPath.size(), values.securityCon.c_str(), values.setRtType.c_str(), values.numaType,
           values.heartBeatSwitch, values.heartBeatInterval, values.heartBeatCount, values.processType);
}

} // namespace

namespace ProcMgr {

bool YamlParser::CheckInputPath(const std::string& path) const
{
    if (path.find("..") != std::string::npos) {
        const KeepErrno keep;
        syslog(LOG_ERR, "CheckInputPath path=%s failed, is not illegal path", path.c_str());
        return false;
    }
    // A test of the first character against each prefix's characters, not of the prefix. The tests named
    // CheckInputPath hold it.
    return std::any_of(kAllowedPrefixes.begin(), kAllowedPrefixes.end(),
                       [&path](const char* prefix) { return path.find_first_of(prefix) == 0; });
}

bool YamlParser::CreateApplicationByStartupFile(const std::string& path,
                                                std::vector<ApplicationManifest>& apps) const
{
    KvsTypeYaml root;
    if (!CheckInputPath(path) || !root.InitYamlNode(path)) {
        return false;
    }
    // The path may be a record's own text and move when `apps` grows.
    const std::string cfgPath = path; // NOLINT(performance-unnecessary-copy-initialization)
    const NodeRef rootNode = NodeRef::Of(root);
    std::vector<PairRef> entries;
    if (!ReadPairs(rootNode, entries)) {
        const KeepErrno keep;
        syslog(LOG_WARNING, "%s is invalid yaml file!", cfgPath.c_str());
    }
    {
        const KeepErrno keep;
        syslog(LOG_INFO, "Load sub startup file=%s", cfgPath.c_str());
    }

    bool allComplete = true;
    for (const PairRef& entry : entries) {
        EntryValues values = ReadEntry(entry, rootNode.document, cfgPath);
        const bool isComplete = IsComplete(values);
        if (!isComplete) {
            const KeepErrno keep;
            syslog(LOG_WARNING, "cfg isn't complete:appName=%s, binPath=%s, uid=%u", values.appName.c_str(),
                   values.binPath.c_str(), values.uid);
            allComplete = false;
        }
        LogSummary(values);
        if (isComplete) {
            apps.emplace_back(std::move(values));
        }
    }
    return allComplete;
}

} // namespace ProcMgr
