#include "tool/source/placeholders.h"

#include <algorithm>
#include <utility>

namespace tool {

std::vector<Placeholder> PlaceholdersIn(const std::string& path,
                                        const std::map<std::string, std::string>& replaceData)
{
    std::vector<Placeholder> found;
    std::size_t open = path.find("${");
    while (open != std::string::npos) {
        const std::size_t close = path.find('}', open);
        Placeholder one;
        one.begin = open;
        one.isClosed = close != std::string::npos;
        one.name = path.substr(open + 2, one.isClosed ? close - open - 2 : std::string::npos);
        one.isKnown = one.isClosed && replaceData.count(one.name) != 0;
        // Behind an unknown one the library looks on from within it.
        open = path.find("${", one.isKnown ? close + 1 : open + one.name.size());
        found.push_back(std::move(one));
        if (!found.back().isClosed || (found.back().name.empty() && !found.back().isKnown)) {
            break;
        }
    }
    return found;
}

} // namespace tool
