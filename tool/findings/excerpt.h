#ifndef STARTPLAN_TOOL_FINDINGS_EXCERPT_H
#define STARTPLAN_TOOL_FINDINGS_EXCERPT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// A line of a file with a mark below one place in it.
struct Excerpt {
    std::string line;
    std::size_t indent = 0; // columns before the mark
    std::string mark;       // "^~~~"
};

// The printable line, cut at either end to at most `width` columns (0 for any) so that the mark is in it.
// `column` counts characters from 1; `length` is how many characters are marked, 0 for unknown.
Excerpt MakeExcerpt(std::string_view line, std::uint32_t column, std::size_t length, std::size_t width);

// The text in lines of at most `width` columns (0 for any), broken at spaces. A longer word has a line of its
// own. At least one line.
std::vector<std::string> WrapWords(std::string_view text, std::size_t width);

} // namespace tool

#endif
