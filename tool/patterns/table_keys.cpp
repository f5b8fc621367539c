#include "tool/patterns/table_keys.h"

#include <algorithm>
#include <tuple>

#include "tool/patterns/name_pattern.h"

namespace tool {

std::vector<TableKey> TableKeys(const Configuration& configuration)
{
    std::vector<TableKey> keys;
    for (const auto& [name, depends] : configuration.library.GetApplicationDependsMap()) {
        if (name.size() > kLongestName) {
            continue;
        }
        const bool isPattern = configuration.library.IsDynamicPara(name);
        const std::string_view text = name;
        keys.push_back({&name, &depends, isPattern ? text.substr(0, text.find('<')) : text, isPattern});
    }
    std::sort(keys.begin(), keys.end(), [](const TableKey& a, const TableKey& b) {
        return std::tie(a.lead, *a.name) < std::tie(b.lead, *b.name);
    });
    return keys;
}

const SourceEntry* EntryOf(const Configuration& configuration, const TableKey& key)
{
    const std::size_t app = configuration.FindApp(*key.name);
    return app == kNone ? nullptr : configuration.EntryOf(app);
}

bool BeginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

} // namespace tool
