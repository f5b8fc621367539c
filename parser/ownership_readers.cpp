#include <cstdint>
#include <string>

#include <grp.h>
#include <pwd.h>
#include <sys/types.h>
#include <syslog.h>

#include "parser/entry_keys.h"
#include "parser/entry_lookup.h"
#include "parser/entry_readers.h"
#include "parser/secure_wipe.h"
#include "startplan/parser.h"
#include "yaml/keep_errno.h"

namespace {

using startplan::EntryKey;
using startplan::EntryLookup;
using startplan::KeepErrno;

void LookUpUser(const std::string& userName, std::uint32_t& uid)
{
    if (userName.empty()) {
        const KeepErrno keep;
        syslog(LOG_INFO, "uid and userName are empty, set uid to default value");
        return;
    }
    passwd* account = getpwnam(userName.c_str());
    if (account == nullptr) {
        const KeepErrno keep;
        syslog(LOG_ERR, "getpwnam failed, userName=%s", userName.c_str());
        return;
    }
    uid = account->pw_uid;
    {
        const KeepErrno keep;
        syslog(LOG_INFO, "override uid:%u, userName=%s", uid, userName.c_str());
    }
    // No account data is to stay behind in this process.
    memset_s(account, sizeof(*account), 0, sizeof(*account));
}

void LookUpGroup(const std::string& groupName, std::uint32_t& gid)
{
    if (groupName.empty()) {
        const KeepErrno keep;
        syslog(LOG_INFO, "gid and groupName are empty, set gid to default value");
        return;
    }
    const group* record = getgrnam(groupName.c_str());
    if (record == nullptr) {
        const KeepErrno keep;
        syslog(LOG_ERR, "getgrnam failed, groupName=%s", groupName.c_str());
        return;
    }
    gid = record->gr_gid;
    const KeepErrno keep;
    syslog(LOG_INFO, "override gid:%u, groupName=%s", gid, groupName.c_str());
}

// Without a group of its own, an application given by number runs in the group of that number.
std::uint32_t ReadGid(const EntryLookup& entry)
{
    const startplan::NodeRef gid = entry.Find(EntryKey::GID);
    if (gid.IsPresent()) {
        return static_cast<std::uint32_t>(startplan::ScalarInt(*gid.node));
    }
    return startplan::UintOr(entry.Find(EntryKey::UID), startplan::kDefaultGid);
}

} // namespace

namespace startplan {

void ReadOwnership(const EntryLookup& entry, std::uint32_t& uid, std::uint32_t& gid)
{
    if (entry.Find(EntryKey::UID).IsPresent() || entry.Find(EntryKey::GID).IsPresent()) {
        uid = UintOr(entry.Find(EntryKey::UID), kDefaultUid);
        gid = ReadGid(entry);
        return;
    }
    LookUpUser(StrOr(entry.Find(EntryKey::USER_NAME), ""), uid);
    LookUpGroup(StrOr(entry.Find(EntryKey::GROUP_NAME), ""), gid);
}

} // namespace startplan

namespace ProcMgr {

void YamlParser::GetOwnership(const KvsTypeYaml& node, std::uint32_t& uid, std::uint32_t& gid) const
{
    startplan::ReadOwnership(EntryLookup(startplan::NodeRef::Of(node)), uid, gid);
}

std::uint32_t YamlParser::GetGid(const KvsTypeYaml& node) const
{
    return ReadGid(EntryLookup(startplan::NodeRef::Of(node)));
}

void YamlParser::GetUidByUserName(const std::string& userName, std::uint32_t& uid) const
{
    LookUpUser(userName, uid);
}

void YamlParser::GetGidByGroupName(const std::string& groupName, std::uint32_t& gid) const
{
    LookUpGroup(groupName, gid);
}

} // namespace ProcMgr
