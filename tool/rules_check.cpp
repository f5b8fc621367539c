#include "tool/rules_check.h"

namespace tool {

const Rule kRefusedInput = {
    "refused-input",
    RuleGroup::CHECK,
    Level::ERROR,
    "input that the library must not be given",
    "Some input would keep the library busy for hours or for ever: an endless placeholder \"${}\", a pipe "
    "or\n"
    "a device where a file is expected, a very large file, very deep nesting, very many anchors. Such input\n"
    "is found before the library is called, and the check ends with exit status 2.",
    "startup_path_list:\n"
    "  - /etc/app/${}.yaml\n",
    "The device hangs while it reads its configuration, or runs out of memory.",
    "Take the input out, or make it smaller.",
};

std::vector<const Rule*> CheckRules()
{
    return {&kRefusedInput};
}

} // namespace tool
