#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_OPTIONS_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_OPTIONS_H

#include <optional>
#include <string>
#include <vector>

#include "restart_policy.h"

// The command line.
struct Options {
    std::string topPath;
    std::string replacePath;
    std::string controlPath;
    std::vector<std::string> names;
    bool all = false;
    Limits limits;
};

// Nothing, with the usage printed, where the command line is not understood.
std::optional<Options> ParseOptions(int argc, char** argv);

#endif
