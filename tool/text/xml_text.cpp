#include "tool/text/xml_text.h"

#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// Surrogates, U+FFFE and U+FFFF, each of three bytes.
bool IsNoXml(std::string_view sequence)
{
    const auto byte = [sequence](std::size_t at) { return static_cast<unsigned char>(sequence[at]); };
    return sequence.size() == 3 &&
           ((byte(0) == 0xED && byte(1) >= 0xA0) || (byte(0) == 0xEF && byte(1) == 0xBF && byte(2) >= 0xBE));
}

} // namespace

std::string XmlText(std::string_view text)
{
    const std::string printable = Printable(text);
    std::string out;
    out.reserve(printable.size());
    for (std::size_t i = 0; i < printable.size(); ++i) {
        if (IsNoXml(std::string_view(printable).substr(i, 3))) {
            out += kReplacement;
            i += 2;
            continue;
        }
        switch (printable[i]) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += printable[i];
        }
    }
    return out;
}

} // namespace tool
