#ifndef STARTPLAN_TOOL_TEXT_NUMBER_TEXT_H
#define STARTPLAN_TOOL_TEXT_NUMBER_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tool {

// How a text looks that should be a number. What the library makes of it is the library's to say.
struct NumberText {
    bool isWhole = false;   // nothing but a sign, a prefix and digits, and blanks around them
    bool hasPrefix = false; // "0x"
    std::size_t digits = 0; // without leading zeros
    // Of a whole number: its value, or a limit far beyond every range.
    std::int64_t value = 0;
};

// Digits to base 10 or 16; the prefix may stand before both.
NumberText ReadNumberText(std::string_view text, unsigned base);

} // namespace tool

#endif
