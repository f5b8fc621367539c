#ifndef STARTPLAN_PARSER_ENTRY_READERS_H
#define STARTPLAN_PARSER_ENTRY_READERS_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "startplan/application_manifest.h"
#include "yaml/node_ref.h"

// What the key readers of ProcMgr::YamlParser do once the key has been looked up. `value` is the key's
// value, absent or present; results and log lines are those of the operation that reads the same key.
namespace startplan {

class EntryLookup;

int IntOr(NodeRef value, int def);
std::uint32_t UintOr(NodeRef value, std::uint32_t def);
bool BoolOr(NodeRef value, bool def);
std::string StrOr(NodeRef value, std::string_view def);

void LogAppName(const char* name);
std::int32_t ReadStartupPriority(NodeRef value);
std::uint32_t ReadNodeType(NodeRef value);
void ReadCoreAffinity(std::vector<std::uint32_t>& out, NodeRef value);
std::string ReadRestart(NodeRef value);

void ReadOwnership(const EntryLookup& entry, std::uint32_t& uid, std::uint32_t& gid);

void ReadArguments(std::vector<std::string>& out, NodeRef value);
void ReadEnvironment(std::map<std::string, std::string>& out, NodeRef value);
void ReadDependencies(std::set<std::string>& out, NodeRef value);
void ReadCgroupPaths(std::multimap<std::string, std::string>& cgroups, NodeRef value);
void ReadSharepoolGroups(std::vector<SharepoolGroupsInfo>& groups, NodeRef value);

// The value of one key of an entry; absent, with the log line of GetSubKvs() where it has one.
inline NodeRef FindKey(const ProcMgr::KvsTypeYaml& entry, std::string_view key)
{
    return FindInMapping(NodeRef::Of(entry), key);
}

} // namespace startplan

#endif
