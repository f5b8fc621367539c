#ifndef STARTPLAN_TESTS_SUPPORT_MANIFEST_BUILDER_H
#define STARTPLAN_TESTS_SUPPORT_MANIFEST_BUILDER_H

#include <cstdint>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "startplan/application_manifest.h"

namespace test_support {

// The values of one record, to be changed before Build(). Here they are those of an entry that gives
// nothing but a name and "bin_path".
struct ManifestValues {
    std::string appName = "app";
    std::string binPath = "/bin/app";
    std::set<std::string> dependList = {};
    std::uint32_t uid = 1000;
    std::vector<std::string> arguments = {};
    std::string restart = "no";
    bool isSo = false;
    std::string soName = {};
    std::string soPath = {};
    std::string processBindPath = {};
    std::uint32_t termTimeOut = 60000;
    bool isForceTerm = false;
    bool isRosNode = false;
    bool isReporting = false;
    std::vector<std::uint32_t> coreAffinity = {};
    std::string resGroupName = {};
    bool isAutoBoot = false;
    std::map<std::string, std::string> envArgv = {};
    std::uint32_t gid = 1000;
    std::int32_t nice = 0;
    std::string setRtPrio = {};
    std::vector<SharepoolGroupsInfo> sharepoolGroups = {};
    std::string securityCon = {};
    std::string startupEntryPath = {};
    std::string cpuset = {};
    bool heartBeatSwitch = true;
    std::uint32_t heartBeatInterval = 3000;
    std::uint32_t heartBeatCount = 10;
    std::uint32_t nodeType = 0;
    std::int32_t vfId = -1;
    std::int32_t startupPriority = -1;
    bool isDelayCoreAffinity = false;
    std::string vfIdPattern = "-1";
    bool isDynamicPara = false;
    std::string blkioGroupName = {};
    std::multimap<std::string, std::string> cgroupPath = {};
    std::string setRtType = {};
    std::int32_t numaType = 0;
    std::int32_t processType = 0;
    std::string cfgPath = {};

    ApplicationManifest Build() const
    {
        return {appName,
                binPath,
                dependList,
                uid,
                arguments,
                restart,
                isSo,
                soName,
                soPath,
                processBindPath,
                termTimeOut,
                isForceTerm,
                isRosNode,
                isReporting,
                coreAffinity,
                resGroupName,
                isAutoBoot,
                envArgv,
                gid,
                setRtPrio,
                sharepoolGroups,
                securityCon,
                nice,
                startupEntryPath,
                cpuset,
                heartBeatSwitch,
                heartBeatInterval,
                heartBeatCount,
                nodeType,
                vfId,
                startupPriority,
                isDelayCoreAffinity,
                vfIdPattern,
                isDynamicPara,
                blkioGroupName,
                cgroupPath,
                setRtType,
                numaType,
                processType,
                cfgPath};
    }
};

// The values that the getters of a record give.
inline ManifestValues ValuesOf(const ApplicationManifest& app)
{
    ManifestValues values;
    values.appName = app.GetAppName();
    values.binPath = app.GetBinPath();
    values.dependList = app.GetDependList();
    values.uid = app.GetUid();
    values.arguments = app.GetArguments();
    values.restart = app.GetRestart();
    values.isSo = app.GetIsSo();
    values.soName = app.GetSoName();
    values.soPath = app.GetSoPath();
    values.processBindPath = app.GetProcessBindPath();
    values.termTimeOut = app.GetTermTimeOut();
    values.isForceTerm = app.GetIsForceTerm();
    values.isRosNode = app.GetIsRosNode();
    values.isReporting = app.GetIsReporting();
    values.coreAffinity = app.GetCoreAffinity();
    values.resGroupName = app.GetResGroupName();
    values.isAutoBoot = app.GetIsAutoBoot();
    values.envArgv = app.GetEnvArgv();
    values.gid = app.GetGid();
    values.nice = app.GetNice();
    values.setRtPrio = app.GetSetRtPrio();
    values.sharepoolGroups = app.GetSharepoolGroups();
    values.securityCon = app.GetSecurityCon();
    values.startupEntryPath = app.GetStartupEntryPath();
    values.cpuset = app.GetCpuset();
    values.heartBeatSwitch = app.GetHeartBeatSwitch();
    values.heartBeatInterval = app.GetHeartBeatInterval();
    values.heartBeatCount = app.GetHeartBeatCount();
    values.nodeType = app.GetNodeType();
    values.vfId = app.GetVfId();
    values.startupPriority = app.GetStartupPriority();
    values.isDelayCoreAffinity = app.GetIsDelayCoreAffinity();
    values.vfIdPattern = app.GetVfIdPattern();
    values.isDynamicPara = app.GetIsDynamicPara();
    values.blkioGroupName = app.GetBlkioGroupName();
    values.cgroupPath = app.GetCGroupPath();
    values.setRtType = app.GetSetRtType();
    values.numaType = app.GetNumaType();
    values.processType = app.GetProcessType();
    values.cfgPath = app.GetCfgPath();
    return values;
}

// Writes one "member: value" a line, so that a failed comparison shows the member that differs.
class ManifestText {
public:
    template <typename Value>
    void Add(const char* member, const Value& value)
    {
        text_ << member << ':';
        Write(value);
        text_ << '\n';
    }
    std::string Text() const { return text_.str(); }

private:
    template <typename Value>
    void Write(const Value& value)
    {
        text_ << ' ' << value;
    }
    void Write(const std::string& value) { text_ << " \"" << value << '"'; }
    void Write(const SharepoolGroupsInfo& value)
    {
        text_ << ' ' << value.groupName << '=' << value.permission;
    }
    template <typename First, typename Second>
    void Write(const std::pair<First, Second>& value)
    {
        Write(value.first);
        Write(value.second);
    }
    template <typename Container>
    void WriteAll(const Container& values)
    {
        for (const auto& value : values) {
            text_ << ',';
            Write(value);
        }
    }
    template <typename Value>
    void Write(const std::vector<Value>& values)
    {
        WriteAll(values);
    }
    void Write(const std::set<std::string>& values) { WriteAll(values); }
    void Write(const std::map<std::string, std::string>& values) { WriteAll(values); }
    void Write(const std::multimap<std::string, std::string>& values) { WriteAll(values); }

    std::ostringstream text_;
};

// Every value of a record as text, in the order of the members.
inline std::string TextOf(const ManifestValues& values)
{
    ManifestText text;
    text.Add("appName", values.appName);
    text.Add("binPath", values.binPath);
    text.Add("dependList", values.dependList);
    text.Add("uid", values.uid);
    text.Add("arguments", values.arguments);
    text.Add("restart", values.restart);
    text.Add("isSo", values.isSo);
    text.Add("soName", values.soName);
    text.Add("soPath", values.soPath);
    text.Add("processBindPath", values.processBindPath);
    text.Add("termTimeOut", values.termTimeOut);
    text.Add("isForceTerm", values.isForceTerm);
    text.Add("isRosNode", values.isRosNode);
    text.Add("isReporting", values.isReporting);
    text.Add("coreAffinity", values.coreAffinity);
    text.Add("resGroupName", values.resGroupName);
    text.Add("isAutoBoot", values.isAutoBoot);
    text.Add("envArgv", values.envArgv);
    text.Add("gid", values.gid);
    text.Add("nice", values.nice);
    text.Add("setRtPrio", values.setRtPrio);
    text.Add("sharepoolGroups", values.sharepoolGroups);
    text.Add("securityCon", values.securityCon);
    text.Add("startupEntryPath", values.startupEntryPath);
    text.Add("cpuset", values.cpuset);
    text.Add("heartBeatSwitch", values.heartBeatSwitch);
    text.Add("heartBeatInterval", values.heartBeatInterval);
    text.Add("heartBeatCount", values.heartBeatCount);
    text.Add("nodeType", values.nodeType);
    text.Add("vfId", values.vfId);
    text.Add("startupPriority", values.startupPriority);
    text.Add("isDelayCoreAffinity", values.isDelayCoreAffinity);
    text.Add("vfIdPattern", values.vfIdPattern);
    text.Add("isDynamicPara", values.isDynamicPara);
    text.Add("blkioGroupName", values.blkioGroupName);
    text.Add("cgroupPath", values.cgroupPath);
    text.Add("setRtType", values.setRtType);
    text.Add("numaType", values.numaType);
    text.Add("processType", values.processType);
    text.Add("cfgPath", values.cfgPath);
    return text.Text();
}

inline std::string TextOf(const ApplicationManifest& app)
{
    return TextOf(ValuesOf(app));
}

} // namespace test_support

#endif
