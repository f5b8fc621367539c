#include "tool/rules/rules_accounts.h"

namespace tool {

const Rule kUnknownUser = {
    "unknown-user",
    RuleGroup::VALUES,
    Level::ERROR,
    "a user_name that is no account of the device",
    "Looked for only with --root or --passwd, since the accounts of the machine that the check runs on say\n"
    "nothing about the device. A user_name beside a uid or gid is not looked up.",
    "recorder:\n"
    "  bin_path: /opt/recorder\n"
    "  user_name: recoder      # the device's account is called \"recorder\"\n",
    "The application runs as user 1000, whoever that is. The library logs an error and goes on.",
    "Correct the name, add the account to the image, or write uid and gid.",
};

const Rule kUnknownGroup = {
    "unknown-group",
    RuleGroup::VALUES,
    Level::ERROR,
    "a group_name that is no group of the device",
    "Looked for only with --root or --group, since the groups of the machine that the check runs on say\n"
    "nothing about the device. A group_name beside a uid or gid is not looked up.",
    "recorder:\n"
    "  bin_path: /opt/recorder\n"
    "  user_name: recorder\n"
    "  group_name: storag      # the device's group is called \"storage\"\n",
    "The application runs in group 1000, whatever that is. The library logs an error and goes on.",
    "Correct the name, add the group to the image, or write uid and gid.",
};

std::vector<const Rule*> AccountRules()
{
    return {&kUnknownUser, &kUnknownGroup};
}

} // namespace tool
