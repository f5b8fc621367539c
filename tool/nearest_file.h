#ifndef STARTPLAN_TOOL_NEAREST_FILE_H
#define STARTPLAN_TOOL_NEAREST_FILE_H

#include <string>

namespace tool {

// How to mend a path that names nothing: the file with the nearest name, or the part of the path that is not
// there. Printable. `root` is the folder in which paths begin, empty for this machine's; `namedBy` is the file
// in which the path stands, which is hardly meant.
std::string HelpForMissingFile(const std::string& root, const std::string& path, const std::string& namedBy);

// The same for a path that names a folder.
std::string HelpForFolder(const std::string& root, const std::string& path);

} // namespace tool

#endif
