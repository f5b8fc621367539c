#ifndef STARTPLAN_TOOL_COMMAND_LINE_COMMAND_H
#define STARTPLAN_TOOL_COMMAND_LINE_COMMAND_H

#include <memory>
#include <string>
#include <vector>

#include "tool/command_line/session.h"
#include "tool/text/failure.h"

namespace CLI {
class App;
}

namespace tool {

// One command. Made before the command line is read, so its members are what its options fill.
class Command {
public:
    virtual ~Command() = default;
    // Adds the command's own options; the common ones are added behind them. Never CLI11's positional
    // arguments, see Run().
    virtual void Define(CLI::App& /*app*/) {}
    // Does the work. `words` is what stands on the command line besides the options, as written. Throws
    // Failure where it cannot be done.
    virtual ExitStatus Run(Session& session, std::vector<std::string> words) = 0;
};

// In which part of the help a command stands, in this order.
enum class Section { LOOK, REQUESTS, PATTERNS, ABOUT };

// "Look at a configuration" and so on.
const char* TitleOf(Section section);

// What a command says of itself, in lines of 100 at most, to --help and to its page of the manual. Paragraphs by
// an empty line; indented lines are shown as they are.
struct Description {
    const char* text;    // what it does, and its arguments
    const char* exits;   // "0 done, 1 ..., 2 ...."
    const char* example; // a command line
    // For the page alone: sections, each below a line of capitals; and further examples.
    const char* more = "";
    const char* examples = "";
};

struct CommandInfo {
    const char* name;
    const char* arguments; // as the usage line shows them: "[TOP]"
    const char* summary;   // one line without a full stop
    Description help;
    Section section;
    std::vector<std::string> formats; // the first one is the default
    std::unique_ptr<Command> (*make)();
};

// Every command, by section and name.
std::vector<CommandInfo> Commands();

// A command enters the list by one such object in its own file:
//
//     const CommandEntry kEntry({"list", "[TOP]", "...", kHelp, Section::LOOK, {"text", "json"},
//                                []() -> std::unique_ptr<Command> {
//                                    return std::make_unique<ListCommand>(); }});
struct CommandEntry {
    explicit CommandEntry(CommandInfo info);
};

} // namespace tool

#endif
