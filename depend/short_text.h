#ifndef STARTPLAN_DEPEND_SHORT_TEXT_H
#define STARTPLAN_DEPEND_SHORT_TEXT_H

#include <cstddef>
#include <string_view>

namespace startplan {

// string_view::find() for texts of a few bytes, as the pieces of names are: there the calls of the C
// library's searches, which it makes, cost several times what the search itself does.
inline std::size_t FindShort(std::string_view text, char wanted)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == wanted) {
            return i;
        }
    }
    return std::string_view::npos;
}

inline bool BeginsWith(std::string_view text, std::string_view prefix)
{
    if (text.size() < prefix.size()) {
        return false;
    }
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        if (text[i] != prefix[i]) {
            return false;
        }
    }
    return true;
}

// `wanted` is not empty.
inline std::size_t FindShort(std::string_view text, std::string_view wanted)
{
    for (std::size_t i = 0; i + wanted.size() <= text.size(); ++i) {
        if (text[i] == wanted.front() && BeginsWith(text.substr(i + 1), wanted.substr(1))) {
            return i;
        }
    }
    return std::string_view::npos;
}

} // namespace startplan

#endif
