#ifndef STARTPLAN_TOOL_COMPLETION_COMPLETION_SCRIPTS_H
#define STARTPLAN_TOOL_COMPLETION_COMPLETION_SCRIPTS_H

#include <string>
#include <string_view>

#include "tool/completion/completion_shapes.h"

namespace tool {

// A shell's script that completes the command. Commands and options stand in it; what depends on the line
// (names of applications, which argument comes next) it asks by "startplan completion words -- LINE".
std::string BashScript(const CompletionShapes& shapes);
std::string ZshScript(const CompletionShapes& shapes);
std::string FishScript(const CompletionShapes& shapes);

// The text in single quotes, for the first two of these shells.
std::string ShellQuoted(std::string_view text);

// Every spelling of the options that need a value behind them, of all commands.
std::vector<std::string> NamesWithValue(const CompletionShapes& shapes);

} // namespace tool

#endif
