#include "tool/check/check_accounts.h"

#include <set>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "tool/rules/rules_accounts.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

// What differs between users and groups.
struct AccountKind {
    const Rule* rule;
    const char* key;
    const char* noun;      // "user"
    std::string_view line; // what the library logs when it knows no such name
    const char* effect;
};

constexpr std::string_view kUserLine = "getpwnam failed, userName=%s";
constexpr std::string_view kGroupLine = "getgrnam failed, groupName=%s";

const AccountKind kUsers = {&kUnknownUser, "user_name", "user", kUserLine,
                            "the application runs as user 1000"};
const AccountKind kGroups = {&kUnknownGroup, "group_name", "group", kGroupLine,
                             "the application runs in group 1000"};

std::set<std::string> NamesThatFailed(const Configuration& configuration, const AccountKind& kind)
{
    std::set<std::string> names;
    for (const LogLine& line : configuration.lines) {
        if (line.format == kind.line && line.arguments.size() == 1) {
            names.insert(line.arguments[0]);
        }
    }
    return names;
}

void AddFinding(const Configuration& configuration, const SourceEntry& entry, const NodeUse& value,
                const AccountKind& kind, const AccountFile& accounts, Findings& findings)
{
    const SourceFile& file = configuration.tree.FileOf(entry);
    const std::string name = Printable(file.Text(value));
    Finding finding;
    finding.rule = kind.rule;
    finding.position = configuration.tree.PositionOf(entry.visit, value);
    finding.length = LengthOf(file, value);
    finding.visit = entry.visit;
    finding.message =
        fmt::format("unknown {} \"{}\": {} {}", kind.noun, name,
                    accounts.isThere ? "not in" : "the device has no", Printable(accounts.path));
    finding.effect = kind.effect;
    const std::string nearest = Nearest(file.Text(value), accounts.Names());
    finding.help =
        fmt::format("{}add the {}, or write uid and gid",
                    nearest.empty() ? "correct the name, "
                                    : fmt::format("did you mean \"{}\"? If not, ", Printable(nearest)),
                    kind.noun);
    findings.Add(std::move(finding));
}

void CheckKind(const Configuration& configuration, const AccountKind& kind, const AccountFile& accounts,
               Findings& findings)
{
    const std::set<std::string> failed = NamesThatFailed(configuration, kind);
    if (failed.empty()) {
        return;
    }
    for (const SourceEntry& entry : configuration.tree.Entries()) {
        const SourceFile& file = configuration.tree.FileOf(entry);
        const NodeUse* value = file.Find(entry.value, kind.key);
        if (value == nullptr || file.Find(entry.value, "uid") != nullptr ||
            file.Find(entry.value, "gid") != nullptr || failed.count(std::string(file.Text(*value))) == 0) {
            continue;
        }
        AddFinding(configuration, entry, *value, kind, accounts, findings);
    }
}

} // namespace

void CheckAccounts(const Configuration& configuration, Findings& findings)
{
    if (configuration.users) {
        CheckKind(configuration, kUsers, *configuration.users, findings);
    }
    if (configuration.groups) {
        CheckKind(configuration, kGroups, *configuration.groups, findings);
    }
}

} // namespace tool
