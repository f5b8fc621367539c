#ifndef STARTPLAN_TOOL_SOURCE_NEAREST_FILE_H
#define STARTPLAN_TOOL_SOURCE_NEAREST_FILE_H

#include <string>

namespace tool {

// How to mend a path that cannot be read, with that errno: the file with the nearest name, or the part of the
// path that is not there. Printable; empty for want of advice. `root` is the folder in which paths begin, empty
// for this machine's; `namedBy` the file in which the path stands, empty for the command line.
std::string HelpForUnreadable(const std::string& root, const std::string& path, const std::string& namedBy,
                              int error);

} // namespace tool

#endif
