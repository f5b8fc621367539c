#ifndef STARTPLAN_TOOL_MANUAL_COMMAND_PAGE_H
#define STARTPLAN_TOOL_MANUAL_COMMAND_PAGE_H

#include <map>
#include <string>

#include "tool/command_line/command_line.h"
#include "tool/manual/roff_page.h"

namespace tool {

// The page of one command: what its help says, and what its entry says to the manual alone.
std::string CommandPage(const CommandLine& line, const CommandInfo& info, const Edition& edition);

// What the command line knows of the page about the whole program, by the lines of the template that it takes the
// place of.
std::map<std::string, std::string> MainPageParts(const CommandLine& line);

} // namespace tool

#endif
