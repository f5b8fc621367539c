#include "tool/text/number_text.h"

namespace tool {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";
constexpr std::int64_t kFarBeyond = std::int64_t{1} << 50U;

// The digit's value, or `base` for what is no digit.
unsigned DigitOf(char c, unsigned base)
{
    unsigned digit = base;
    if (c >= '0' && c <= '9') {
        digit = static_cast<unsigned>(c - '0');
    } else if (c >= 'a' && c <= 'f') {
        digit = static_cast<unsigned>(c - 'a') + 10;
    } else if (c >= 'A' && c <= 'F') {
        digit = static_cast<unsigned>(c - 'A') + 10;
    }
    return digit < base ? digit : base;
}

std::string_view Trim(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

} // namespace

NumberText ReadNumberText(std::string_view text, unsigned base)
{
    NumberText number;
    text = Trim(text);
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        number.hasPrefix = true;
        base = 16;
        text.remove_prefix(2);
    }
    number.isWhole = !text.empty();
    for (const char c : text) {
        const unsigned digit = DigitOf(c, base);
        if (digit == base) {
            number.isWhole = false;
            return number;
        }
        number.digits += number.digits != 0 || digit != 0 ? 1U : 0U;
        number.value = number.value < kFarBeyond ? number.value * base + digit : kFarBeyond;
    }
    number.value = isNegative ? -number.value : number.value;
    return number;
}

} // namespace tool
