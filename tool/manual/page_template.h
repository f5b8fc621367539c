#ifndef STARTPLAN_TOOL_MANUAL_PAGE_TEMPLATE_H
#define STARTPLAN_TOOL_MANUAL_PAGE_TEMPLATE_H

#include <map>
#include <string>

namespace tool {

// A page that is written by hand but for some parts, each of which takes the place of a line "%NAME%". Throws
// Failure if the page has no such line, or another one.
std::string FillTemplate(const std::string& path, std::map<std::string, std::string> parts);

} // namespace tool

#endif
