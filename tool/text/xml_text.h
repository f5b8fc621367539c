#ifndef STARTPLAN_TOOL_TEXT_XML_TEXT_H
#define STARTPLAN_TOOL_TEXT_XML_TEXT_H

#include <string>
#include <string_view>

namespace tool {

// The text for use between tags and in a quoted attribute of XML or HTML, where it can be nothing but text.
// Made printable first; characters that XML does not have at all become U+FFFD.
std::string XmlText(std::string_view text);

} // namespace tool

#endif
