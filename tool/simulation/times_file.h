#ifndef STARTPLAN_TOOL_SIMULATION_TIMES_FILE_H
#define STARTPLAN_TOOL_SIMULATION_TIMES_FILE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tool/simulation/time_line.h"
#include "tool/source/source_tree.h"

namespace tool {

// How long starts, or stops, take: a YAML mapping from names, or patterns of names as in a configuration,
// to whole milliseconds.
//
//     disk: 250
//     "camera_<0-3>": 1200
class TimesFile {
public:
    struct Entry {
        std::string name;
        Milliseconds time = 0;
        Position position;
        bool isPattern = false;
    };

    // Throws Failure with the place where the file is no such mapping.
    static TimesFile Read(const std::string& path);

    // By the exact name, else by the first pattern that matches.
    std::optional<Milliseconds> Find(const std::string& name) const;

    const std::vector<Entry>& Entries() const { return entries_; }

private:
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::size_t> exact_;
    std::vector<std::size_t> patterns_;
};

// Whole milliseconds up to 4294967295, digits only; none for anything else.
std::optional<Milliseconds> ReadMilliseconds(std::string_view text);

} // namespace tool

#endif
