#ifndef STARTPLAN_PARSER_ENTRY_KEYS_H
#define STARTPLAN_PARSER_ENTRY_KEYS_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace startplan {

// The keys of an application entry, in the order in which they are read.
enum class EntryKey : std::uint8_t {
    BIN_PATH,
    UID,
    USER_NAME,
    GID,
    GROUP_NAME,
    RESTART,
    IS_SO,
    SO_NAME,
    SO_PATH,
    PROCESS_BIND_PATH,
    TERM_TIME_OUT,
    IS_FORCE_TERM,
    IS_ROS_NODE,
    IS_REPORTING,
    RES_GROUP_NAME,
    IS_AUTO_BOOT,
    SET_RT_PRIO,
    DEPENDS,
    ARGUMENTS,
    CORE_AFFINITY,
    ENV,
    SHAREPOOL_GROUPS,
    SECURITY_CON,
    NICE,
    DEVICE_ID,
    STARTUP_ENTRY_PATH,
    CPUSET,
    HEART_BEAT,
    HEART_BEAT_INTERVAL,
    HEART_BEAT_COUNT,
    NODE_TYPE,
    STARTUP_PRIORITY,
    IS_DYNAMIC_PARA,
    BLKIO_CGROUP_NAME,
    CGROUP_PATH,
    SET_RT_TYPE,
    NUMA_TYPE,
    PROCESS_TYPE,
};

inline constexpr std::size_t kEntryKeyCount = static_cast<std::size_t>(EntryKey::PROCESS_TYPE) + 1;

// Their spellings, in the same order.
inline constexpr std::array<const char*, kEntryKeyCount> kEntryKeyNames = {
    "bin_path",
    "uid",
    "user_name",
    "gid",
    "group_name",
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
    "isDynamicPara",
    "blkio_cgroup_name",
    "cgroup_path",
    "set_rt_type",
    "numa_type",
    "process_type",
};

constexpr const char* NameOf(EntryKey key)
{
    return kEntryKeyNames[static_cast<std::size_t>(key)];
}

// What an absent key is worth, where that is not 0, false or empty.
inline constexpr std::uint32_t kDefaultUid = 1000;
inline constexpr std::uint32_t kDefaultGid = 1000;
inline constexpr int kDefaultTermTimeOutMs = 60000;
inline constexpr bool kDefaultHeartBeat = true;
inline constexpr std::uint32_t kDefaultHeartBeatInterval = 3000;
inline constexpr std::uint32_t kDefaultHeartBeatCount = 10;
inline constexpr int kDefaultVfId = -1;
inline constexpr char kDefaultVfIdPattern[] = "-1";
inline constexpr int kNoStartupPriority = -1;

// The uid that no application may run as: an entry that asks for it is incomplete.
inline constexpr std::uint32_t kInvalidUid = 0xFFFFFFFF;

} // namespace startplan

#endif
