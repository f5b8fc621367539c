#ifndef STARTPLAN_APPLICATION_MANIFEST_H
#define STARTPLAN_APPLICATION_MANIFEST_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace startplan {
struct EntryValues; // the library's own working record; not part of the interface
}

/// @file
/// The record of one application.

/// One shared memory pool group that an application joins.
struct SharepoolGroupsInfo {
    std::string groupName;  ///< the key of the pair under "sharepool_groups"
    std::string permission; ///< "ro", "rw" or "alloc"
};

/// Everything the configuration says of one application: what to run, as whom, with what, and what must
/// run before it. Never changes once made.
///
/// The library makes one for each complete entry of a startup file and hands them out in vectors. It
/// reads back the name and the dependencies; every other value is carried to the process manager
/// uninterpreted. A record owns all its values and outlives the file it was read from. It can be copied
/// (deeply) and moved from, but not assigned to; a record that was moved from may only be destroyed.
///
/// The comment of each getter names the entry key that the value comes from and the value that an entry
/// without that key gets. Getters that return a reference give the member itself, good as long as the
/// record lives. Nothing here logs. Threads: safe to read from several at once.
class ApplicationManifest {
public:
    /// Stores each argument as it is; nothing is checked, converted or computed.
    ///
    /// Beware of the order: setRtPrio is argument 20 and nice argument 23, although the member nice_
    /// stands right behind gid_.
    /// Throws std::bad_alloc. Logs nothing.
    ApplicationManifest(
        const std::string& appName, const std::string& binPath, const std::set<std::string>& dependList,
        std::uint32_t uid, const std::vector<std::string>& arguments, const std::string& restart, bool isSo,
        const std::string& soName, const std::string& soPath, const std::string& processBindPath,
        std::uint32_t termTimeOut, bool isForceTerm, bool isRosNode, bool isReporting,
        const std::vector<std::uint32_t>& coreAffinity, const std::string& resGroupName, bool isAutoBoot,
        const std::map<std::string, std::string>& envArgv, std::uint32_t gid, const std::string& setRtPrio,
        const std::vector<SharepoolGroupsInfo>& sharepoolGroups, const std::string& securityCon,
        std::int32_t nice, const std::string& startupEntryPath, const std::string& cpuset,
        bool heartBeatSwitch, std::uint32_t heartBeatInterval, std::uint32_t heartBeatCount,
        std::uint32_t nodeType, std::int32_t vfId, std::int32_t startupPriority, bool isDelayCoreAffinity,
        const std::string& vfIdPattern, bool isDynamicPara, const std::string& blkioGroupName,
        const std::multimap<std::string, std::string>& cgroupPath, const std::string& setRtType,
        std::int32_t numaType, std::int32_t processType, const std::string& cfgPath);

    // Only the library can call this one. It takes the values over.
    [[gnu::visibility("hidden")]] explicit ApplicationManifest(startplan::EntryValues&& values) noexcept;

    /// A deep copy, equal member for member. Throws std::bad_alloc.
    ApplicationManifest(const ApplicationManifest& other);
    /// Takes the other's values over, so that a growing vector need not copy them.
    ApplicationManifest(ApplicationManifest&& other) noexcept;
    ApplicationManifest& operator=(const ApplicationManifest&) = delete;
    ApplicationManifest& operator=(ApplicationManifest&&) = delete;
    ~ApplicationManifest();

    /// The entry's own mapping key: the application's name, or a pattern of names. Not empty in a record
    /// that the library made.
    const std::string& GetAppName() const { return appName_; }
    /// "bin_path": the executable. Not empty in a record that the library made.
    const std::string& GetBinPath() const { return binPath_; }
    /// "depends", empty: the names that must be running first; ascending byte order, each once.
    const std::set<std::string>& GetDependList() const { return dependList_; }
    /// "uid" or "user_name", 1000: whom to run as. Not 4294967295 in a record that the library made.
    std::uint32_t GetUid() const { return uid_; }
    /// "arguments", empty: at most 256, in the file's order, empty ones kept.
    const std::vector<std::string>& GetArguments() const { return arguments_; }
    /// "restart", "no": one of "no", "on-failure", "on-forever", "on-until-succeed".
    const std::string& GetRestart() const { return restart_; }
    /// "is_so", false: the application is a shared object.
    bool GetIsSo() const { return isSo_; }
    /// "so_name", empty: the shared object's name.
    const std::string& GetSoName() const { return soName_; }
    /// "so_path", empty: the shared object's path.
    const std::string& GetSoPath() const { return soPath_; }
    /// "process_bind_path", empty.
    const std::string& GetProcessBindPath() const { return processBindPath_; }
    /// "term_time_out", 60000: how long a stop may take, in milliseconds. A negative value in the file is
    /// here modulo 2^32.
    std::uint32_t GetTermTimeOut() const { return termTimeOut_; }
    /// "is_force_term", false.
    bool GetIsForceTerm() const { return isForceTerm_; }
    /// "is_ros_node", false.
    bool GetIsRosNode() const { return isRosNode_; }
    /// "is_reporting", false.
    bool GetIsReporting() const { return isReporting_; }
    /// "core_affinity", empty: CPU core numbers in the file's order.
    const std::vector<std::uint32_t>& GetCoreAffinity() const { return coreAffinity_; }
    /// "res_group_name", empty: the resource group.
    const std::string& GetResGroupName() const { return resGroupName_; }
    /// "is_auto_boot", false.
    bool GetIsAutoBoot() const { return isAutoBoot_; }
    /// "env", empty: environment variables, name to value, ascending by name.
    const std::map<std::string, std::string>& GetEnvArgv() const { return envArgv_; }
    /// "gid" or "group_name"; the uid where only "uid" is given; 1000 where nothing is.
    std::uint32_t GetGid() const { return gid_; }
    /// "nice", 0: the nice value.
    std::int32_t GetNice() const { return nice_; }
    /// "set_rt_prio", empty: the real-time switch as lower-case text; a copy.
    std::string GetSetRtPrio() const { return setRtPrio_; }
    /// Whether the text of GetSetRtPrio() is exactly "true". Stricter than the other booleans: "true "
    /// with a blank, "1" and "yes" are false.
    bool GetIsSetRtPrio() const;
    /// "sharepool_groups", empty: in the file's order.
    const std::vector<SharepoolGroupsInfo>& GetSharepoolGroups() const { return sharepoolGroups_; }
    /// "security_con", empty: the security context; a copy.
    std::string GetSecurityCon() const { return securityCon_; }
    /// "startup_entry_path", empty; a copy.
    std::string GetStartupEntryPath() const { return startupEntryPath_; }
    /// "cpuset", empty.
    const std::string& GetCpuset() const { return cpuset_; }
    /// "heart_beat", true: heart-beat supervision is on.
    bool GetHeartBeatSwitch() const { return heartBeatSwitch_; }
    /// "heart_beat_interval", 3000: as written.
    std::uint32_t GetHeartBeatInterval() const { return heartBeatInterval_; }
    /// "heart_beat_count", 10: as written.
    std::uint32_t GetHeartBeatCount() const { return heartBeatCount_; }
    /// "node_type", 0: written in hexadecimal in the file.
    std::uint32_t GetNodeType() const { return nodeType_; }
    /// "device_id" as a number, -1.
    std::int32_t GetVfId() const { return vfId_; }
    /// "startup_priority", -1 for none: 0 to 255.
    std::int32_t GetStartupPriority() const { return startupPriority_; }
    /// False in every record that the library makes: no key sets it.
    bool GetIsDelayCoreAffinity() const { return isDelayCoreAffinity_; }
    /// "device_id" as written, "-1"; a copy.
    std::string GetVfIdPattern() const { return vfIdPattern_; }
    /// "isDynamicPara", false: the entry uses dynamic parameters.
    bool GetIsDynamicPara() const { return isDynamicPara_; }
    /// "blkio_cgroup_name", empty.
    const std::string& GetBlkioGroupName() const { return blkioGroupName_; }
    /// "cgroup_path", empty: ascending by key, equal keys in the file's order.
    const std::multimap<std::string, std::string>& GetCGroupPath() const { return cgroupPath_; }
    /// "set_rt_type", empty: the real-time scheduling type as written; a copy.
    std::string GetSetRtType() const { return setRtType_; }
    /// "numa_type", 0.
    std::int32_t GetNumaType() const { return numaType_; }
    /// "process_type", 0.
    std::int32_t GetProcessType() const { return processType_; }
    /// The path of the startup file that the entry stands in, with its placeholders replaced.
    const std::string& GetCfgPath() const { return cfgPath_; }

private:
    std::string appName_;
    std::string binPath_;
    std::set<std::string> dependList_;
    std::uint32_t uid_;
    std::vector<std::string> arguments_;
    std::string restart_;
    bool isSo_;
    std::string soName_;
    std::string soPath_;
    std::string processBindPath_;
    std::uint32_t termTimeOut_;
    bool isForceTerm_;
    bool isRosNode_;
    bool isReporting_;
    std::vector<std::uint32_t> coreAffinity_;
    std::string resGroupName_;
    bool isAutoBoot_;
    std::map<std::string, std::string> envArgv_;
    std::uint32_t gid_;
    std::int32_t nice_;
    std::string setRtPrio_;
    std::vector<SharepoolGroupsInfo> sharepoolGroups_;
    std::string securityCon_;
    std::string startupEntryPath_;
    std::string cpuset_;
    bool heartBeatSwitch_;
    std::uint32_t heartBeatInterval_;
    std::uint32_t heartBeatCount_;
    std::uint32_t nodeType_;
    std::int32_t vfId_;
    std::int32_t startupPriority_;
    bool isDelayCoreAffinity_;
    std::string vfIdPattern_;
    bool isDynamicPara_;
    std::string blkioGroupName_;
    std::multimap<std::string, std::string> cgroupPath_;
    std::string setRtType_;
    std::int32_t numaType_;
    std::int32_t processType_;
    std::string cfgPath_;
};

#endif
