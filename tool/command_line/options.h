#ifndef STARTPLAN_TOOL_COMMAND_LINE_OPTIONS_H
#define STARTPLAN_TOOL_COMMAND_LINE_OPTIONS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tool/configuration/configuration.h"
#include "tool/plan/request_plan.h"

namespace CLI {
class App;
}

namespace tool {

// The options that every command takes.
struct CommonOptions {
    std::string configuration;                      // -c
    std::string replaceFile;                        // -r
    std::map<std::string, std::string> definitions; // -D
    DeviceFiles device;                             // --root, --passwd, --group
    std::string format;                             // -f; without it the command's first one
    std::string output;
    std::string color = "auto";
    bool isQuiet = false;
    bool isVerbose = false;
};

// Adds them to the main program or to one command: both fill the same record, so that they may stand
// before the command's name as well as behind it.
void AddCommonOptions(CLI::App& app, CommonOptions& options);

// What is given as NAME=VALUE; of a name that comes twice the last one. Throws UsageFailure for anything else.
std::map<std::string, std::string> ReadDefinitions(const std::string& option,
                                                   const std::vector<std::string>& given);

// The top-level file: of -c, or else the first of `words`, which is then taken off. Throws UsageFailure
// where there is neither.
std::string TakeTop(const CommonOptions& options, std::vector<std::string>& words);

// Throws UsageFailure if there are words that nobody has taken.
void RefuseWords(const std::vector<std::string>& words);

// "start" or "stop", the first of `words`, which is taken off. Throws UsageFailure for anything else.
RequestKind TakeRequestKind(std::vector<std::string>& words);

ConfigurationRequest RequestFor(const CommonOptions& options, std::string top);

// The values of --color.
const std::vector<std::string>& ColorChoices();

// Throws UsageFailure if this is none of them.
void CheckColor(const std::string& color);

// Throws UsageFailure with the nearest one if `format` is none of `formats`.
void CheckFormat(const std::string& format, const std::vector<std::string>& formats);

} // namespace tool

#endif
