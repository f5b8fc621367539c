#ifndef STARTPLAN_TOOL_MANUAL_PAGE_PARTS_H
#define STARTPLAN_TOOL_MANUAL_PAGE_PARTS_H

#include <set>
#include <string>
#include <string_view>

#include "tool/command_line/command.h"
#include "tool/manual/roff_page.h"

namespace tool {

// A text in blocks with empty lines between them: a line of capitals begins a section, indented lines are shown
// as they are, all else is a paragraph.
void AddBlocks(RoffPage& page, std::string_view text);

// The options of a group, each with its value and its description, as the help shows them.
void AddOptions(RoffPage& page, const CLI::App& app, std::string_view group);

// "0 done, 1 ..., 2 ...": an item for each status.
void AddExits(RoffPage& page, std::string_view exits);

// The section on environment variables, the same for every command.
void AddEnvironment(RoffPage& page);

// All that a usage and the values of a command's options write in capitals.
std::set<std::string> VariablesOf(std::string_view usage, const CLI::App& app);

// "Text." of "text".
std::string Sentence(std::string_view text);

} // namespace tool

#endif
