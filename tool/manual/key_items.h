#ifndef STARTPLAN_TOOL_MANUAL_KEY_ITEMS_H
#define STARTPLAN_TOOL_MANUAL_KEY_ITEMS_H

#include <map>
#include <string>

namespace tool {

// The keys of each kind of file, made from the table of keys, by the lines of the template that they take the
// place of.
std::map<std::string, std::string> KeyParts();

} // namespace tool

#endif
