#ifndef STARTPLAN_DEPEND_NAME_NUMBERS_H
#define STARTPLAN_DEPEND_NAME_NUMBERS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <set>
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
    static constexpr Id kUnknown = std::numeric_limits<Id>::max();

    NameNumbers() = default;
    explicit NameNumbers(const std::vector<std::string>& names)
    {
        Reset(names.size());
        for (const std::string& name : names) {
            Add(name);
        }
    }

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

    // A name whose number is about to be asked for.
    struct Announced {
        const std::string* name = nullptr;
        std::uint32_t hash = 0;
    };

    // Makes `announced` the list of `names`, and has the processor fetch what Add() and Of() will read of
    // them: side by side, where one after the other each would wait for a slot and then for a text.
    void Announce(const std::set<std::string>& names, std::vector<Announced>& announced) const
    {
        announced.clear();
        for (const std::string& name : names) {
            const std::uint32_t hash = Hash(name);
            __builtin_prefetch(&slots_[FirstSlot(hash)]);
            announced.push_back({&name, hash});
        }
        for (const Announced& next : announced) {
            const Id id = slots_[FirstSlot(next.hash)].id;
            if (id != kUnknown) {
                __builtin_prefetch(Text(id).data());
            }
        }
    }

    // The number of a name, which is the next one where the name is new.
    Id Add(const Announced& announced)
    {
        if (Count() * kSlotsEach >= slots_.size()) {
            Resize(Count() + 1);
        }
        Slot& slot = slots_[Find(*announced.name, announced.hash)];
        if (slot.id == kUnknown) {
            slot = {announced.hash, static_cast<Id>(Count())};
            text_.append(*announced.name);
            ends_.push_back(text_.size());
        }
        return slot.id;
    }
    Id Add(const std::string& name) { return Add(Announced{&name, Hash(name)}); }

    // The number of a name, or kUnknown.
    Id Of(const Announced& announced) const { return slots_[Find(*announced.name, announced.hash)].id; }
    Id Of(std::string_view name) const { return slots_[Find(name, Hash(name))].id; }

private:
    static constexpr std::size_t kSlotsEach = 2; // at the least, so that a search ends within a few slots

    struct Slot {
        std::uint32_t hash = 0;
        Id id = kUnknown;
    };

    static std::uint32_t Hash(std::string_view name)
    {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
    }

    std::size_t FirstSlot(std::uint32_t hash) const { return hash & (slots_.size() - 1); }

    // The slot that holds a name, or the one to put it in.
    std::size_t Find(std::string_view name, std::uint32_t hash) const
    {
        const std::size_t mask = slots_.size() - 1;
        std::size_t i = FirstSlot(hash);
        while (slots_[i].id != kUnknown && (slots_[i].hash != hash || Text(slots_[i].id) != name)) {
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
            if (slot.id != kUnknown) {
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
