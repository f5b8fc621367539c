#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <syslog.h>

#include "parser/entry_keys.h"
#include "parser/entry_readers.h"
#include "startplan/parser.h"
#include "yaml/keep_errno.h"

namespace startplan {

namespace {

constexpr std::size_t kMostArguments = 256;

} // namespace

void ReadArguments(std::vector<std::string>& out, NodeRef value)
{
    std::vector<std::string> arguments;
    if (value.IsPresent()) {
        arguments = SequenceStrings(value);
    }
    if (arguments.size() > kMostArguments) {
        const KeepErrno keep;
        // The number of arguments kept, not of those rejected: that is what this line has always told.
        syslog(LOG_WARNING, "ParseYamlToApplicationManifest arguments:%lu is beyond max nums",
               static_cast<unsigned long>(out.size()));
        return;
    }
    out = std::move(arguments);
}

void ReadEnvironment(std::map<std::string, std::string>& out, NodeRef value)
{
    if (!value.IsPresent()) {
        return;
    }
    std::vector<PairRef> variables;
    if (!ReadPairs(value, variables)) {
        const KeepErrno keep;
        syslog(LOG_WARNING, "no env config!");
        return;
    }
    for (const PairRef& variable : variables) {
        out.try_emplace(std::string(variable.key), ScalarText(*variable.value));
    }
}

void ReadDependencies(std::set<std::string>& out, NodeRef value)
{
    if (!value.IsPresent()) {
        return;
    }
    for (std::string& name : SequenceStrings(value)) {
        // Lists are often written in order; the hint then saves the search.
        out.insert(out.end(), std::move(name));
    }
}

} // namespace startplan

namespace ProcMgr {

using startplan::EntryKey;
using startplan::FindKey;
using startplan::NameOf;

void YamlParser::GetArguments(std::vector<std::string>& out, const KvsTypeYaml& node) const
{
    startplan::ReadArguments(out, FindKey(node, NameOf(EntryKey::ARGUMENTS)));
}

void YamlParser::GetEnvArgv(std::map<std::string, std::string>& out, const KvsTypeYaml& node) const
{
    startplan::ReadEnvironment(out, FindKey(node, NameOf(EntryKey::ENV)));
}

void YamlParser::GetDependApps(std::set<std::string>& out, const KvsTypeYaml& node) const
{
    startplan::ReadDependencies(out, FindKey(node, NameOf(EntryKey::DEPENDS)));
}

} // namespace ProcMgr
