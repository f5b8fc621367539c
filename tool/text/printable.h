#ifndef STARTPLAN_TOOL_TEXT_PRINTABLE_H
#define STARTPLAN_TOOL_TEXT_PRINTABLE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

// The text as it can be shown on a terminal: control characters and bytes that are no UTF-8 as "\x1B", so
// that no name in a file can move the cursor. Everything else as it is.
std::string Printable(std::string_view text);

// How many columns a printable text takes: one for each character.
std::size_t Width(std::string_view text);

// The byte at which so many characters have passed, or the text's end.
std::size_t ByteOfCharacter(std::string_view text, std::size_t characters);

// The text cut to `width` columns, its beginning replaced by "…": the end of a path tells more.
std::string CutFront(const std::string& text, std::size_t width);

// The text for a message: printable, in quotes, cut at its end to a length that is read in one glance.
std::string Quoted(std::string_view text);

} // namespace tool

#endif
