#ifndef STARTPLAN_TESTS_SUPPORT_PLACEHOLDER_MODEL_H
#define STARTPLAN_TESTS_SUPPORT_PLACEHOLDER_MODEL_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace test_support {

// The plain model of `${name}` in a path, one rule a line. Nothing for a path on which the search never ends:
// behind an unknown name it goes on at that name's length behind the "${", and for the empty name ("${}")
// or one that ends in "${" this is where it has been. The library promises not to return there.
inline std::optional<std::string> ReplacedIfItEnds(std::string path,
                                                   const std::map<std::string, std::string>& data)
{
    std::size_t pos = data.empty() ? std::string::npos : path.find("${");
    while (pos != std::string::npos) {
        const std::size_t end = path.find('}', pos);
        if (end == std::string::npos) {
            break;
        }
        const std::string name = path.substr(pos + 2, end - pos - 2);
        const auto known = data.find(name);
        if (known != data.end()) {
            path = path.substr(0, pos) + known->second + path.substr(end + 1);
        }
        const std::size_t next =
            path.find("${", pos + (known != data.end() ? known->second.size() : name.size()));
        if (known == data.end() && next == pos) {
            return std::nullopt;
        }
        pos = next;
    }
    return path;
}

// For a path on which it ends.
inline std::string ReplacedByTheModel(const std::string& path, const std::map<std::string, std::string>& data)
{
    return ReplacedIfItEnds(path, data).value();
}

} // namespace test_support

#endif
