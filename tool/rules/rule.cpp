#include "tool/rules/rule.h"

#include <array>
#include <cstddef>

namespace tool {

namespace {

constexpr std::array<std::string_view, 4> kLevels = {"off", "note", "warning", "error"};

constexpr std::array<std::string_view, 7> kGroups = {"Tree",     "Entries",  "Values",   "Dependencies",
                                                     "Patterns", "Requests", "The check"};

} // namespace

std::string_view LevelName(Level level)
{
    return kLevels[static_cast<std::size_t>(level)];
}

std::optional<Level> ParseLevel(std::string_view name)
{
    for (std::size_t i = 0; i < kLevels.size(); ++i) {
        if (kLevels[i] == name) {
            return static_cast<Level>(i);
        }
    }
    return std::nullopt;
}

std::string_view GroupTitle(RuleGroup group)
{
    return kGroups[static_cast<std::size_t>(group)];
}

} // namespace tool
