#include "tool/text/printable.h"

#include <iterator>

#include <fmt/format.h>

namespace tool {

namespace {

bool IsContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The length of the UTF-8 sequence at the start of the text; 0 if there is no complete one.
std::size_t SequenceLength(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    std::size_t length = 1;
    if (lead >= 0xF0 && lead < 0xF5) {
        length = 4;
    } else if (lead >= 0xE0) {
        length = lead < 0xF0 ? 3 : 0;
    } else if (lead >= 0xC2) {
        length = 2;
    } else if (lead >= 0x80) {
        length = 0;
    }
    if (length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) {
            return 0;
        }
    }
    return length;
}

// C0, DEL and C1 (U+0080 to U+009F).
bool IsControl(std::string_view sequence)
{
    const auto lead = static_cast<unsigned char>(sequence.front());
    return lead < 0x20 || lead == 0x7F ||
           (sequence.size() == 2 && lead == 0xC2 && static_cast<unsigned char>(sequence[1]) < 0xA0);
}

} // namespace

std::string Printable(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        const std::string_view piece = text.substr(0, length == 0 ? 1 : length);
        text.remove_prefix(piece.size());
        if (length != 0 && !IsControl(piece)) {
            out.append(piece);
            continue;
        }
        for (const char c : piece) {
            fmt::format_to(std::back_inserter(out), "\\x{:02X}", static_cast<unsigned char>(c));
        }
    }
    return out;
}

std::size_t Width(std::string_view text)
{
    std::size_t width = 0;
    for (const char c : text) {
        width += IsContinuation(c) ? 0U : 1U;
    }
    return width;
}

std::size_t ByteOfCharacter(std::string_view text, std::size_t characters)
{
    std::size_t at = 0;
    for (; characters > 0 && at < text.size(); --characters) {
        do {
            ++at;
        } while (at < text.size() && IsContinuation(text[at]));
    }
    return at;
}

std::string CutFront(const std::string& text, std::size_t width)
{
    std::size_t have = Width(text);
    if (have <= width || width == 0) {
        return text;
    }
    std::size_t at = 0;
    while (at < text.size() && (have > width - 1 || IsContinuation(text[at]))) {
        have -= IsContinuation(text[at]) ? 0U : 1U;
        ++at;
    }
    return "…" + text.substr(at);
}

std::string Quoted(std::string_view text)
{
    constexpr std::size_t kMost = 60;
    const std::size_t end = ByteOfCharacter(text, kMost);
    return fmt::format("\"{}{}\"", Printable(text.substr(0, end)), end < text.size() ? "…" : "");
}

} // namespace tool
