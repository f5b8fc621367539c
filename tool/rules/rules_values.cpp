#include "tool/rules/rules_values.h"

namespace tool {

const Rule kBadPermission = {
    "bad-permission",
    RuleGroup::VALUES,
    Level::ERROR,
    "an access to a shared memory pool that does not exist",
    "Behind a group in \"sharepool_groups\" stands something else than ro, rw or alloc, in lower case.",
    "vision:\n"
    "  bin_path: /bin/vision\n"
    "  sharepool_groups: {frames: RW}\n",
    "The group is left out, with an error in the log; the other groups stay.",
    "Write ro, rw or alloc.",
};

const Rule kBadRestart = {
    "bad-restart",
    RuleGroup::VALUES,
    Level::ERROR,
    "a restart policy that does not exist",
    "\"restart\" is one of no, on-failure, on-forever and on-until-succeed, in exactly this spelling.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  restart: always\n",
    "The policy becomes \"no\", with a warning in the log: the program is not started again.",
    "Write one of the four.",
};

const Rule kGroupDefaults = {
    "group-defaults",
    RuleGroup::VALUES,
    Level::WARNING,
    "a user by name whose group is left to the default",
    "\"user_name\" stands without \"group_name\", \"uid\" and \"gid\". The group of the user's account is "
    "never\n"
    "taken. (\"uid\" alone is silent: it stands for the gid as well.)",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  user_name: daemon\n",
    "The application runs as that user with the group id 1000.",
    "Write \"group_name\", too.",
};

const Rule kHexSurprise = {
    "hex-surprise",
    RuleGroup::VALUES,
    Level::WARNING,
    "a number that is read to another base than it seems",
    "A number with \"0x\" behind a key that is read as decimal; an error for \"uid\" and \"gid\", which "
    "become\n"
    "root's. Or a \"node_type\" of decimal digits alone: it is hexadecimal with \"0x\" and without. One "
    "digit\n"
    "is silent.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  nice: 0x0A\n"
    "  node_type: 10\n",
    "A decimal number ends at the \"x\": it is 0. A node type of 10 is 16.",
    "Write the number to the base that the key wants, node types with \"0x\".",
};

const Rule kNotABoolean = {
    "not-a-boolean",
    RuleGroup::VALUES,
    Level::WARNING,
    "a flag that is neither true nor false",
    "A flag is searched for \"true\", in any letter case: \"yes\", \"on\" and \"1\" are false, \"untrue\" is "
    "true.\n"
    "\"set_rt_prio\" is on only if it is \"true\" and nothing else. Blanks around a flag are silent.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  is_auto_boot: yes\n",
    "Everything without \"true\" in it is false, without a message.",
    "Write true or false.",
};

const Rule kNumberGarbage = {
    "number-garbage",
    RuleGroup::VALUES,
    Level::WARNING,
    "a number with something else in it",
    "A number holds characters that are no digits: a unit, a decimal point, a word. An error for \"uid\" "
    "and\n"
    "\"gid\": a word there is root's number. Blanks around a number are silent, and so is every "
    "\"device_id\",\n"
    "which is a text as well.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  term_time_out: 2.5s\n",
    "Reading stops at the first character that is no digit, without a message: this is 2 milliseconds. What\n"
    "begins with no digit is 0.",
    "Write digits alone.",
};

const Rule kNumberSaturates = {
    "number-saturates",
    RuleGroup::VALUES,
    Level::WARNING,
    "a number that is too large to be kept",
    "A number lies beyond the range of its key and is not a negative one for a key that has none (that is\n"
    "number-wraps).",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  heart_beat_interval: 3000000000\n",
    "The nearest number of 32 bits is taken, without a message: here 2147483647.",
    "Write a number of the key's range.",
};

const Rule kNumberWraps = {
    "number-wraps",
    RuleGroup::VALUES,
    Level::WARNING,
    "a number that becomes quite another one",
    "A negative number behind a key that has none, or a \"node_type\" of more than 32 bits. (A uid of -1 is\n"
    "incomplete-entry.)",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  term_time_out: -1\n",
    "It is taken for an unsigned number of 32 bits, without a message: here 4294967295 milliseconds, which\n"
    "are 49 days.",
    "Write a number of the key's range.",
};

const Rule kPriorityNotNumber = {
    "priority-not-number",
    RuleGroup::VALUES,
    Level::WARNING,
    "a start priority that is no number",
    "\"startup_priority\" holds characters that are no digits.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  startup_priority: high\n",
    "What begins with no digit is 0, a priority like any other; it is not -1, which stands for none.",
    "Write a number from 0 to 255.",
};

const Rule kPriorityRange = {
    "priority-range",
    RuleGroup::VALUES,
    Level::WARNING,
    "a start priority out of range",
    "\"startup_priority\" is a number, but not one from 0 to 255.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  startup_priority: 300\n",
    "It becomes -1, which stands for none, with a warning in the log.",
    "Write a number from 0 to 255, or leave the key out for none.",
};

const Rule kUserNameIgnored = {
    "user-name-ignored",
    RuleGroup::VALUES,
    Level::WARNING,
    "a name of a user or group that is not looked at",
    "\"user_name\" or \"group_name\" stands beside \"uid\" or \"gid\". One number, even an empty one, is "
    "enough for\n"
    "both names to be ignored.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  uid: 500\n"
    "  group_name: audio\n",
    "The numbers alone count: here both user and group are 500.",
    "Write numbers or names, not both.",
};

std::vector<const Rule*> ValueRules()
{
    return {&kBadPermission,     &kBadRestart,    &kGroupDefaults,   &kHexSurprise,
            &kNotABoolean,       &kNumberGarbage, &kNumberSaturates, &kNumberWraps,
            &kPriorityNotNumber, &kPriorityRange, &kUserNameIgnored};
}

} // namespace tool
