#include "tool/findings/excerpt.h"

#include <algorithm>

#include "tool/text/printable.h"

namespace tool {

Excerpt MakeExcerpt(std::string_view line, std::uint32_t column, std::size_t length, std::size_t width)
{
    const std::size_t begin = ByteOfCharacter(line, column == 0 ? 0 : column - 1);
    const std::size_t end = begin + ByteOfCharacter(line.substr(begin), length);
    // Tabs and other control characters take more columns when they are made visible.
    Excerpt excerpt{Printable(line), Width(Printable(line.substr(0, begin))), "^"};
    std::size_t marked = std::max<std::size_t>(1, Width(Printable(line.substr(begin, end - begin))));
    const std::size_t all = Width(excerpt.line);
    if (width != 0 && all > width) {
        marked = std::min(marked, width);
        const std::size_t last = excerpt.indent + marked;
        const std::size_t cut = last > width ? std::min(excerpt.indent, last - width) : 0;
        const std::size_t from = ByteOfCharacter(excerpt.line, cut);
        excerpt.line =
            excerpt.line.substr(from, ByteOfCharacter(std::string_view(excerpt.line).substr(from), width));
        excerpt.indent -= cut;
    }
    excerpt.mark.append(marked - 1, '~');
    return excerpt;
}

std::vector<std::string> WrapWords(std::string_view text, std::size_t width)
{
    std::vector<std::string> lines(1);
    std::size_t have = 0;
    while (!text.empty()) {
        const std::size_t space = std::min(text.find(' '), text.size());
        const std::string_view word = text.substr(0, space);
        text.remove_prefix(std::min(space + 1, text.size()));
        if (width != 0 && !lines.back().empty() && have + 1 + Width(word) > width) {
            lines.emplace_back();
            have = 0;
        }
        if (!lines.back().empty()) {
            lines.back() += ' ';
            ++have;
        }
        lines.back() += word;
        have += Width(word);
    }
    return lines;
}

} // namespace tool
