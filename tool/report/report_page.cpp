#include "tool/report/report_page.h"

#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "tool/report/report_files.h"
#include "tool/text/xml_text.h"

namespace tool {

namespace {

// Within a script element the end tag and a comment's beginning are markup even in a JSON string. Without "<"
// there is neither.
std::string ScriptSafe(const Json& data)
{
    const std::string json = data.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string out;
    out.reserve(json.size());
    for (const char c : json) {
        if (c == '<') {
            out += "\\u003c";
            continue;
        }
        out += c;
    }
    return out;
}

} // namespace

std::string ReportPage(const std::string& title, const Json& data)
{
    const std::string name = XmlText(title);
    const std::string json = ScriptSafe(data);
    const std::pair<std::string_view, std::string_view> parts[] = {
        {"@TITLE@", name},
        {"@STYLE@", report::kStyle},
        {"@LIBRARY@", report::kLibrary},
        {"@LICENCE@", report::kLicence},
        {"@SCRIPT@", report::kScript},
        {"@DATA@", json},
    };
    std::string page;
    std::string_view rest = report::kPage;
    // Only the template is looked through, never what has been put in.
    while (!rest.empty()) {
        const std::size_t at = rest.find('@');
        page += rest.substr(0, at);
        if (at == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(at);
        std::size_t length = 1;
        std::string_view text = rest.substr(0, 1);
        for (const auto& [marker, replacement] : parts) {
            if (rest.substr(0, marker.size()) == marker) {
                length = marker.size();
                text = replacement;
            }
        }
        page += text;
        rest.remove_prefix(length);
    }
    return page;
}

} // namespace tool
