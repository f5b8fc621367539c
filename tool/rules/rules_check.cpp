#include "tool/rules/rules_check.h"

namespace tool {

const Rule kRefusedInput = {
    "refused-input",
    RuleGroup::CHECK,
    Level::ERROR,
    "input that the library must not be given",
    "Some input would keep the library busy for hours, or take all memory: a pipe or a device where a file "
    "is\n"
    "expected, a very large file, very deep nesting, very many anchors. Such input is found before the "
    "library\n"
    "is called, nothing else is checked then, and the exit status is 2.",
    "",
    "The device hangs while it reads its configuration, or runs out of memory.",
    "Take the input out, or make it smaller.",
};

const Rule kUnusedIgnore = {
    "unused-ignore",
    RuleGroup::CHECK,
    Level::WARNING,
    "a comment \"# startplan: ignore[RULE]\" that hides nothing",
    "Such a comment hides the findings of the rule in its own line or, where it has a line of its own, in "
    "the\n"
    "next line that is more than a comment. It is reported when there is nothing to hide, when no rule has\n"
    "that name, and when what follows \"startplan:\" is not understood. Several rules are separated by "
    "commas.",
    "web:\n"
    "  bin_path: /opt/web # startplan: ignore[unknown-key]\n",
    "None: the device does not see comments.",
    "Take the comment out, or correct the rule's name.",
};

std::vector<const Rule*> CheckRules()
{
    return {&kRefusedInput, &kUnusedIgnore};
}

} // namespace tool
