#ifndef STARTPLAN_TOOL_LIBRARY_RESULT_NAMES_H
#define STARTPLAN_TOOL_LIBRARY_RESULT_NAMES_H

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// "PARSE_ERR_CFG_PATH" and so on; "success" for 0.
std::string_view ResultName(std::uint32_t code);

// What the code means for the device, as a clause.
std::string_view ResultMeaning(std::uint32_t code);

// "PARSE_ERR_CFG_PATH (0xF10000)".
std::string ResultText(std::uint32_t code);

} // namespace tool

#endif
