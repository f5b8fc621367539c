#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <syslog.h>

#include "parser/entry_keys.h"
#include "parser/entry_readers.h"
#include "startplan/application_manifest.h"
#include "startplan/parser.h"
#include "yaml/keep_errno.h"

namespace startplan {

namespace {

constexpr std::array<std::string_view, 3> kPermissions = {"ro", "rw", "alloc"};

} // namespace

void ReadCgroupPaths(std::multimap<std::string, std::string>& cgroups, NodeRef value)
{
    if (!value.IsPresent()) {
        return;
    }
    const KeepErrno keep;
    std::vector<PairRef> pairs;
    if (!ReadPairs(value, pairs)) {
        syslog(LOG_WARNING, "no cgroups config!");
        return;
    }
    std::string summary;
    for (const PairRef& pair : pairs) {
        const std::string_view path = ScalarText(*pair.value);
        cgroups.emplace(pair.key, path);
        summary.append(pair.key).append(":").append(path).append(", ");
    }
    syslog(LOG_INFO, "cgroup path info:%s", summary.c_str());
}

void ReadSharepoolGroups(std::vector<SharepoolGroupsInfo>& groups, NodeRef value)
{
    if (!value.IsPresent()) {
        return;
    }
    const KeepErrno keep;
    std::vector<PairRef> pairs;
    if (!ReadPairs(value, pairs)) {
        syslog(LOG_WARNING, "ParseYamlToApplicationManifest parse sharepool_group config is not array !");
        return;
    }
    for (const PairRef& pair : pairs) {
        const std::string_view permission = ScalarText(*pair.value);
        if (std::find(kPermissions.begin(), kPermissions.end(), permission) == kPermissions.end()) {
            syslog(LOG_ERR, "ParseYamlToApplicationManifest parse sharepool_group config=%s is illegal",
                   permission.data());
            continue;
        }
        groups.push_back({std::string(pair.key), std::string(permission)});
    }
}

} // namespace startplan

namespace ProcMgr {

using startplan::EntryKey;
using startplan::FindKey;
using startplan::NameOf;

void YamlParser::GetCGroupPath(std::multimap<std::string, std::string>& cgroups,
                               const KvsTypeYaml& entry) const
{
    startplan::ReadCgroupPaths(cgroups, FindKey(entry, NameOf(EntryKey::CGROUP_PATH)));
}

void YamlParser::GetSharepoolGroups(std::vector<SharepoolGroupsInfo>& groups, const KvsTypeYaml& entry) const
{
    startplan::ReadSharepoolGroups(groups, FindKey(entry, NameOf(EntryKey::SHAREPOOL_GROUPS)));
}

} // namespace ProcMgr
