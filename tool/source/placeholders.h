#ifndef STARTPLAN_TOOL_SOURCE_PLACEHOLDERS_H
#define STARTPLAN_TOOL_SOURCE_PLACEHOLDERS_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace tool {

// One "${NAME}" of a path.
struct Placeholder {
    std::size_t begin = 0; // the byte at which it begins
    std::string name;      // up to the first brace; up to the end of the path where none closes it
    bool isClosed = true;
    bool isKnown = false; // replaced
};

// The placeholders of a path as the library comes upon them, see YamlParser::ReplaceByMatchDataInPath(). An
// empty name that is not known ends the list: with any replace data the library gets no further.
std::vector<Placeholder> PlaceholdersIn(const std::string& path,
                                        const std::map<std::string, std::string>& replaceData);

} // namespace tool

#endif
