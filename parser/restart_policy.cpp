#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include <syslog.h>

#include "parser/entry_keys.h"
#include "parser/entry_readers.h"
#include "startplan/parser.h"
#include "yaml/keep_errno.h"

namespace {

// The process manager that consumes the records knows these texts; nothing else of them matters here.
constexpr std::array<std::string_view, 4> kPolicies = {"no", "on-failure", "on-forever", "on-until-succeed"};
constexpr std::string_view kDefaultPolicy = kPolicies[0];

} // namespace

namespace startplan {

std::string ReadRestart(NodeRef value)
{
    if (!value.IsPresent()) {
        return std::string(kDefaultPolicy);
    }
    const std::string_view text = ScalarText(*value.node);
    if (std::find(kPolicies.begin(), kPolicies.end(), text) != kPolicies.end()) {
        return std::string(text);
    }
    const KeepErrno keep;
    syslog(LOG_WARNING, "ParseYamlToApplicationManifest restart cfg is invalid, set default value !");
    return std::string(kDefaultPolicy);
}

} // namespace startplan

namespace ProcMgr {

std::string YamlParser::GetRestart(const KvsTypeYaml& node) const
{
    return startplan::ReadRestart(startplan::FindKey(node, NameOf(startplan::EntryKey::RESTART)));
}

} // namespace ProcMgr
