#include "startplan/application_manifest.h"

#include <utility>

#include "manifest/entry_values.h"

ApplicationManifest::ApplicationManifest(
    const std::string& appName, const std::string& binPath, const std::set<std::string>& dependList,
    std::uint32_t uid, const std::vector<std::string>& arguments, const std::string& restart, bool isSo,
    const std::string& soName, const std::string& soPath, const std::string& processBindPath,
    std::uint32_t termTimeOut, bool isForceTerm, bool isRosNode, bool isReporting,
    const std::vector<std::uint32_t>& coreAffinity, const std::string& resGroupName, bool isAutoBoot,
    const std::map<std::string, std::string>& envArgv, std::uint32_t gid, const std::string& setRtPrio,
    const std::vector<SharepoolGroupsInfo>& sharepoolGroups, const std::string& securityCon,
    std::int32_t nice, const std::string& startupEntryPath, const std::string& cpuset, bool heartBeatSwitch,
    std::uint32_t heartBeatInterval, std::uint32_t heartBeatCount, std::uint32_t nodeType, std::int32_t vfId,
    std::int32_t startupPriority, bool isDelayCoreAffinity, const std::string& vfIdPattern,
    bool isDynamicPara, const std::string& blkioGroupName,
    const std::multimap<std::string, std::string>& cgroupPath, const std::string& setRtType,
    std::int32_t numaType, std::int32_t processType, const std::string& cfgPath)
    : appName_(appName), binPath_(binPath), dependList_(dependList), uid_(uid), arguments_(arguments),
      restart_(restart), isSo_(isSo), soName_(soName), soPath_(soPath), processBindPath_(processBindPath),
      termTimeOut_(termTimeOut), isForceTerm_(isForceTerm), isRosNode_(isRosNode), isReporting_(isReporting),
      coreAffinity_(coreAffinity), resGroupName_(resGroupName), isAutoBoot_(isAutoBoot), envArgv_(envArgv),
      gid_(gid), nice_(nice), setRtPrio_(setRtPrio), sharepoolGroups_(sharepoolGroups),
      securityCon_(securityCon), startupEntryPath_(startupEntryPath), cpuset_(cpuset),
      heartBeatSwitch_(heartBeatSwitch), heartBeatInterval_(heartBeatInterval),
      heartBeatCount_(heartBeatCount), nodeType_(nodeType), vfId_(vfId), startupPriority_(startupPriority),
      isDelayCoreAffinity_(isDelayCoreAffinity), vfIdPattern_(vfIdPattern), isDynamicPara_(isDynamicPara),
      blkioGroupName_(blkioGroupName), cgroupPath_(cgroupPath), setRtType_(setRtType), numaType_(numaType),
      processType_(processType), cfgPath_(cfgPath)
{}

ApplicationManifest::ApplicationManifest(startplan::EntryValues&& values) noexcept
    : appName_(std::move(values.appName)), binPath_(std::move(values.binPath)),
      dependList_(std::move(values.dependList)), uid_(values.uid), arguments_(std::move(values.arguments)),
      restart_(std::move(values.restart)), isSo_(values.isSo), soName_(std::move(values.soName)),
      soPath_(std::move(values.soPath)), processBindPath_(std::move(values.processBindPath)),
      termTimeOut_(values.termTimeOut), isForceTerm_(values.isForceTerm), isRosNode_(values.isRosNode),
      isReporting_(values.isReporting), coreAffinity_(std::move(values.coreAffinity)),
      resGroupName_(std::move(values.resGroupName)), isAutoBoot_(values.isAutoBoot),
      envArgv_(std::move(values.envArgv)), gid_(values.gid), nice_(values.nice),
      setRtPrio_(std::move(values.setRtPrio)), sharepoolGroups_(std::move(values.sharepoolGroups)),
      securityCon_(std::move(values.securityCon)), startupEntryPath_(std::move(values.startupEntryPath)),
      cpuset_(std::move(values.cpuset)), heartBeatSwitch_(values.heartBeatSwitch),
      heartBeatInterval_(values.heartBeatInterval), heartBeatCount_(values.heartBeatCount),
      nodeType_(values.nodeType), vfId_(values.vfId), startupPriority_(values.startupPriority),
      isDelayCoreAffinity_(values.isDelayCoreAffinity), vfIdPattern_(std::move(values.vfIdPattern)),
      isDynamicPara_(values.isDynamicPara), blkioGroupName_(std::move(values.blkioGroupName)),
      cgroupPath_(std::move(values.cgroupPath)), setRtType_(std::move(values.setRtType)),
      numaType_(values.numaType), processType_(values.processType), cfgPath_(std::move(values.cfgPath))
{}

ApplicationManifest::ApplicationManifest(const ApplicationManifest& other) = default;
ApplicationManifest::ApplicationManifest(ApplicationManifest&& other) noexcept = default;
ApplicationManifest::~ApplicationManifest() = default;

bool ApplicationManifest::GetIsSetRtPrio() const
{
    return setRtPrio_ == "true";
}
