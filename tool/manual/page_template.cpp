#include "tool/manual/page_template.h"

#include <fstream>

#include <fmt/format.h>

#include "tool/text/failure.h"

namespace tool {

std::string FillTemplate(const std::string& path, std::map<std::string, std::string> parts)
{
    std::ifstream file(path);
    std::string page;
    for (std::string line; std::getline(file, line);) {
        if (line.size() < 3 || line.front() != '%' || line.back() != '%') {
            page += line + "\n";
            continue;
        }
        const auto part = parts.find(line.substr(1, line.size() - 2));
        if (part == parts.end()) {
            throw Failure(fmt::format("{}: there is nothing for {}", path, line));
        }
        page += part->second;
        parts.erase(part);
    }
    if (!parts.empty()) {
        throw Failure(fmt::format("{} has no line %{}%", path, parts.begin()->first));
    }
    return page;
}

} // namespace tool
