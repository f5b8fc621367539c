#ifndef STARTPLAN_TESTS_SUPPORT_PLACEHOLDER_MODEL_H
#define STARTPLAN_TESTS_SUPPORT_PLACEHOLDER_MODEL_H

#include <cstddef>
#include <map>
#include <string>

namespace test_support {

// The plain model of `${name}` in a path, one rule a line. Does not return for a path that holds "${}" with
// a map that lacks the empty name, as the library does not.
inline std::string ReplacedByTheModel(std::string path, const std::map<std::string, std::string>& data)
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
        pos = path.find("${", pos + (known != data.end() ? known->second.size() : name.size()));
    }
    return path;
}

} // namespace test_support

#endif
