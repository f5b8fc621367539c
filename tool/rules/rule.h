#ifndef STARTPLAN_TOOL_RULES_RULE_H
#define STARTPLAN_TOOL_RULES_RULE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

enum class Level : std::uint8_t { OFF, NOTE, WARNING, ERROR };

// In the order in which they are shown.
enum class RuleGroup : std::uint8_t { TREE, ENTRIES, VALUES, DEPENDENCIES, PATTERNS, REQUESTS, CHECK };

// Something that the check looks for. All texts are plain sentences with a full stop; lines of 100 columns
// at most, paragraphs by an empty line.
struct Rule {
    const char* id; // "missing-dependency"
    RuleGroup group;
    Level level;         // unless -W says otherwise
    const char* summary; // what is found, in one line: lower case start, no full stop
    const char* text;    // when it is found, and when not
    const char* example; // the shortest YAML that shows it, "" if no file can
    const char* effect;  // what the device does
    const char* fix;
};

// "off", "note", "warning", "error".
std::string_view LevelName(Level level);
std::optional<Level> ParseLevel(std::string_view name);

// "Tree", "Entries" and so on.
std::string_view GroupTitle(RuleGroup group);

} // namespace tool

#endif
