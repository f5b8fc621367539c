#ifndef STARTPLAN_MANIFEST_ENTRY_VALUES_H
#define STARTPLAN_MANIFEST_ENTRY_VALUES_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "startplan/application_manifest.h"

namespace startplan {

// The values of one entry while it is being read. A record is then made of them without copying a string
// or a container, which its forty-argument constructor would have to do.
struct EntryValues {
    std::string appName;
    std::string binPath;
    std::set<std::string> dependList;
    std::uint32_t uid = 0;
    std::vector<std::string> arguments;
    std::string restart;
    bool isSo = false;
    std::string soName;
    std::string soPath;
    std::string processBindPath;
    std::uint32_t termTimeOut = 0;
    bool isForceTerm = false;
    bool isRosNode = false;
    bool isReporting = false;
    std::vector<std::uint32_t> coreAffinity;
    std::string resGroupName;
    bool isAutoBoot = false;
    std::map<std::string, std::string> envArgv;
    std::uint32_t gid = 0;
    std::int32_t nice = 0;
    std::string setRtPrio;
    std::vector<SharepoolGroupsInfo> sharepoolGroups;
    std::string securityCon;
    std::string startupEntryPath;
    std::string cpuset;
    bool heartBeatSwitch = false;
    std::uint32_t heartBeatInterval = 0;
    std::uint32_t heartBeatCount = 0;
    std::uint32_t nodeType = 0;
    std::int32_t vfId = 0;
    std::int32_t startupPriority = 0;
    bool isDelayCoreAffinity = false;
    std::string vfIdPattern;
    bool isDynamicPara = false;
    std::string blkioGroupName;
    std::multimap<std::string, std::string> cgroupPath;
    std::string setRtType;
    std::int32_t numaType = 0;
    std::int32_t processType = 0;
    std::string cfgPath;
};

} // namespace startplan

#endif
