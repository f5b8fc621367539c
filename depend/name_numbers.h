#ifndef STARTPLAN_DEPEND_NAME_NUMBERS_H
#define STARTPLAN_DEPEND_NAME_NUMBERS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace startplan {

// Numbers names in the order in which it meets them. Where a hash map of strings follows three pointers for
// each name, each of them a cache miss in a large graph, this reads one slot and one text that holds all
// names (bench_graph measures it).
class NameNumbers {
public:
    using Id = std::uint32_t;

    // Forgets all names, and makes room for so many.
    void Reset(std::size_t expected);

    std::size_t Count() const { return ends_.size() - 1; }

    // The number of a name, which is the next one where the name is new.
    Id Add(std::string_view name);

    // The number of a name that was added.
    Id Of(std::string_view name) const;

private:
    struct Slot {
        std::uint32_t hash;
        Id id;
    };

    std::size_t Find(std::string_view name, std::uint32_t hash) const;
    std::string_view Text(Id id) const;
    void Resize(std::size_t names);

    std::vector<Slot> slots_; // a power of two of them
    std::string text_;        // of all names, one behind the other
    std::vector<std::size_t> ends_ = {0};
};

} // namespace startplan

#endif
