#ifndef STARTPLAN_TOOL_COMPLETION_COMPLETION_SHAPES_H
#define STARTPLAN_TOOL_COMPLETION_COMPLETION_SHAPES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// What may stand in one place of the command line.
enum class WordKind : std::uint8_t {
    OTHER,
    FILE,
    FOLDER,
    APPLICATION, // the name of one
    CHOICE,      // one of a list
};

// One option, as far as completions need it.
struct OptionShape {
    std::vector<std::string> shortNames; // "c"
    std::vector<std::string> longNames;  // "config"
    std::string summary;
    std::string placeholder; // "FILE"; empty for a flag
    bool isValueOptional = false;
    WordKind kind = WordKind::OTHER;
    std::vector<std::string> choices;

    bool NeedsValue() const { return !placeholder.empty() && !isValueOptional; }
    // "-c" and "--config".
    std::vector<std::string> Names() const;
    bool operator==(const OptionShape& other) const;
};

struct CommandShape {
    std::string name;
    std::string summary;
    std::vector<OptionShape> options; // those that no other command has in the same form
};

// All that can be completed without looking at a configuration, from the definitions that the command line
// itself is read by.
struct CompletionShapes {
    std::vector<CommandShape> commands;
    std::vector<OptionShape> common; // the same in every command
};

CompletionShapes MakeCompletionShapes();

// One word of a command's usage.
struct ArgumentShape {
    WordKind kind = WordKind::OTHER;
    std::vector<std::string> choices;
    bool isTop = false; // not there with -c
    bool isRepeated = false;
};

// Takes a usage such as "start|stop TOP NAME...|--all" apart.
std::vector<ArgumentShape> ArgumentShapes(std::string_view usage);

} // namespace tool

#endif
