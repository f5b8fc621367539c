#ifndef STARTPLAN_TOOL_COMMAND_LINE_COMMAND_OPTIONS_H
#define STARTPLAN_TOOL_COMMAND_LINE_COMMAND_OPTIONS_H

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace tool {

// Adds an option of one command that may be given several times; each value is taken as it is written, in
// order. What `take` throws comes out where the command line is read.
void AddListOption(CLI::App& app, const std::string& names, const std::string& type, const std::string& help,
                   std::function<void(const std::string& value)> take);

} // namespace tool

#endif
