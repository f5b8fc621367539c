#ifndef STARTPLAN_DEPEND_NAME_SET_H
#define STARTPLAN_DEPEND_NAME_SET_H

#include <set>
#include <string>
#include <vector>

#include "depend/name_numbers.h"

namespace startplan {

// Names to compare whole lists of dependencies with.
class NameSet {
public:
    explicit NameSet(const std::vector<std::string>& names) : numbers_(names) {}

    // The keys of a table.
    template <typename Table>
    static NameSet KeysOf(const Table& table)
    {
        NameSet keys;
        keys.numbers_.Reset(table.size());
        for (const auto& entry : table) {
            keys.numbers_.Add(entry.first);
        }
        return keys;
    }

    // Those of `names` that are not in the set, in their order; they point into `names`.
    std::vector<const std::string*> Missing(const std::set<std::string>& names)
    {
        std::vector<const std::string*> missing;
        numbers_.Announce(names, announced_);
        for (const NameNumbers::Announced& name : announced_) {
            if (numbers_.Of(name) == NameNumbers::kUnknown) {
                missing.push_back(name.name);
            }
        }
        return missing;
    }

private:
    NameSet() = default;

    NameNumbers numbers_;
    std::vector<NameNumbers::Announced> announced_; // kept for its storage
};

} // namespace startplan

#endif
