#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <syslog.h>

#include "parser/entry_keys.h"
#include "parser/entry_readers.h"
#include "startplan/parser.h"
#include "yaml/keep_errno.h"
#include "yaml/node_ref.h"

namespace startplan {

namespace {

constexpr std::uint32_t kHighestPriority = 255;
constexpr int kNodeTypeBase = 16;

} // namespace

int IntOr(NodeRef value, int def)
{
    return value.IsPresent() ? ScalarInt(*value.node) : def;
}

// Through the signed reading on purpose: values above 2147483647 stop there.
std::uint32_t UintOr(NodeRef value, std::uint32_t def)
{
    return value.IsPresent() ? static_cast<std::uint32_t>(ScalarInt(*value.node)) : def;
}

bool BoolOr(NodeRef value, bool def)
{
    return value.IsPresent() ? ScalarBool(*value.node) : def;
}

std::string StrOr(NodeRef value, std::string_view def)
{
    return std::string(value.IsPresent() ? ScalarText(*value.node) : def);
}

void LogAppName(const char* name)
{
    const KeepErrno keep;
    syslog(LOG_INFO, "Get app name when parsing Yaml file, appName=%s", name);
}

std::int32_t ReadStartupPriority(NodeRef value)
{
    if (!value.IsPresent() || IsNullScalar(*value.node)) {
        return kNoStartupPriority;
    }
    const int priority = ScalarInt(*value.node);
    if (static_cast<std::uint32_t>(priority) > kHighestPriority) {
        const KeepErrno keep;
        syslog(LOG_WARNING, "ParseYamlToApplicationManifest GetStartupPriority=%d is not in 0-255", priority);
        return kNoStartupPriority;
    }
    return priority;
}

std::uint32_t ReadNodeType(NodeRef value)
{
    if (!value.IsPresent()) {
        return 0;
    }
    const std::string_view text = ScalarText(*value.node);
    if (text.empty()) {
        const KeepErrno keep;
        syslog(LOG_WARNING, "ParseYamlToApplicationManifest node_type is null !");
        return 0;
    }
    return static_cast<std::uint32_t>(std::strtoul(text.data(), nullptr, kNodeTypeBase));
}

void ReadCoreAffinity(std::vector<std::uint32_t>& out, NodeRef value)
{
    if (value.IsPresent()) {
        out = SequenceNumbers(value);
    }
}

} // namespace startplan

namespace ProcMgr {

using startplan::EntryKey;
using startplan::FindKey;
using startplan::NameOf;

std::uint32_t YamlParser::GetUintValue(const KvsTypeYaml& node, const std::string& key,
                                       std::uint32_t def) const
{
    return startplan::UintOr(FindKey(node, key), def);
}

std::int32_t YamlParser::GetIntValue(const KvsTypeYaml& node, const std::string& key, int def) const
{
    return startplan::IntOr(FindKey(node, key), def);
}

bool YamlParser::GetBoolValue(const KvsTypeYaml& node, const std::string& key, bool def) const
{
    return startplan::BoolOr(FindKey(node, key), def);
}

std::string YamlParser::GetStrValue(const KvsTypeYaml& node, const std::string& key,
                                    const std::string& def) const
{
    return startplan::StrOr(FindKey(node, key), def);
}

std::string YamlParser::GetAppName(const KvsTypeYaml& node) const
{
    std::string name = node.GetKey();
    startplan::LogAppName(name.c_str());
    return name;
}

std::int32_t YamlParser::GetStartupPriority(const KvsTypeYaml& node) const
{
    return startplan::ReadStartupPriority(FindKey(node, NameOf(EntryKey::STARTUP_PRIORITY)));
}

std::uint32_t YamlParser::GetNodeType(const KvsTypeYaml& node) const
{
    return startplan::ReadNodeType(FindKey(node, NameOf(EntryKey::NODE_TYPE)));
}

void YamlParser::GetCodeAffinity(std::vector<std::uint32_t>& out, const KvsTypeYaml& node) const
{
    startplan::ReadCoreAffinity(out, FindKey(node, NameOf(EntryKey::CORE_AFFINITY)));
}

bool YamlParser::GetIsDynamicPara(const KvsTypeYaml& node) const
{
    return startplan::BoolOr(FindKey(node, NameOf(EntryKey::IS_DYNAMIC_PARA)), false);
}

bool YamlParser::GetIsDelayCoreAffinity(const KvsTypeYaml& /*node*/) const
{
    return false;
}

} // namespace ProcMgr
