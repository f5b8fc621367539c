#ifndef STARTPLAN_DEPEND_NAME_NUMBERS_H
#define STARTPLAN_DEPEND_NAME_NUMBERS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace startplan {

// Numbers names in the order in which it meets them. Where a hash map of strings follows three pointers for
// each name, each of them a cache miss in a large graph, this reads one slot and one text that holds all
// names. Written here whole, since a call for each of a million names would show (bench_graph measures it).
class NameNumbers {
public:
    using Id = std::uint32_t;

    // Forgets all names, and makes room for so many.
    void Reset(std::size_t expected)
    {
        text_.clear();
        ends_.assign(1, 0);
        ends_.reserve(expected + 1);
        slots_.clear();
        Resize(expected);
    }

    std::size_t Count() const { return ends_.size() - 1; }

    // The number of a name, which is the next one where the name is new.
    Id Add(std::string_view name)
    {
        if (Count() * kSlotsEach >= slots_.size()) {
            Resize(Count() + 1);
        }
        const std::uint32_t hash = Hash(name);
        Slot& slot = slots_[Find(name, hash)];
        if (slot.id == kFree) {
            slot = {hash, static_cast<Id>(Count())};
            text_.append(name);
            ends_.push_back(text_.size());
        }
        return slot.id;
    }

    // The number of a name that was added.
    Id Of(std::string_view name) const { return slots_[Find(name, Hash(name))].id; }

private:
    static constexpr Id kFree = std::numeric_limits<Id>::max();
    static constexpr std::size_t kSlotsEach = 2; // at the least, so that a search ends within a few slots

    struct Slot {
        std::uint32_t hash = 0;
        Id id = kFree;
    };

    static std::uint32_t Hash(std::string_view name)
    {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
    }

    // The slot that holds a name, or the one to put it in.
    std::size_t Find(std::string_view name, std::uint32_t hash) const
    {
        const std::size_t mask = slots_.size() - 1;
        std::size_t i = hash & mask;
        while (slots_[i].id != kFree && (slots_[i].hash != hash || Text(slots_[i].id) != name)) {
            i = (i + 1) & mask;
        }
        return i;
    }

    std::string_view Text(Id id) const
    {
        return std::string_view(text_).substr(ends_[id], ends_[id + 1] - ends_[id]);
    }

    void Resize(std::size_t names)
    {
        std::size_t size = kSlotsEach;
        while (size <= names * kSlotsEach) {
            size *= 2;
        }
        std::vector<Slot> old(size);
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.id != kFree) {
                slots_[Find(Text(slot.id), slot.hash)] = slot;
            }
        }
    }

    std::vector<Slot> slots_; // a power of two of them
    std::string text_;        // of all names, one behind the other
    std::vector<std::size_t> ends_ = {0};
};

} // namespace startplan

#endif
