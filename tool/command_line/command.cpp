#include "tool/command_line/command.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

namespace tool {

namespace {

// Made at its first use: the files' own objects enter themselves in no particular order.
std::vector<CommandInfo>& TheList()
{
    static std::vector<CommandInfo> list;
    return list;
}

} // namespace

const char* TitleOf(Section section)
{
    switch (section) {
    case Section::LOOK:
        return "Look at a configuration";
    case Section::REQUESTS:
        return "Requests";
    case Section::PATTERNS:
        return "Names and patterns";
    case Section::ABOUT:
        return "About this command";
    }
    return "";
}

CommandEntry::CommandEntry(CommandInfo info)
{
    TheList().push_back(std::move(info));
}

std::vector<CommandInfo> Commands()
{
    std::vector<CommandInfo> commands = TheList();
    std::sort(commands.begin(), commands.end(), [](const CommandInfo& a, const CommandInfo& b) {
        return std::make_tuple(a.section, std::string_view(a.name)) <
               std::make_tuple(b.section, std::string_view(b.name));
    });
    return commands;
}

} // namespace tool
