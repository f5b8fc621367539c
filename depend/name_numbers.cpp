#include "depend/name_numbers.h"

#include <functional>
#include <limits>

namespace startplan {

namespace {

constexpr NameNumbers::Id kFree = std::numeric_limits<NameNumbers::Id>::max();
constexpr std::size_t kSlotsEach = 2; // at the least, so that a search ends within a few slots

std::uint32_t Hash(std::string_view name)
{
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(name));
}

} // namespace

void NameNumbers::Reset(std::size_t expected)
{
    text_.clear();
    ends_.assign(1, 0);
    ends_.reserve(expected + 1);
    slots_.clear();
    Resize(expected);
}

NameNumbers::Id NameNumbers::Add(std::string_view name)
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

NameNumbers::Id NameNumbers::Of(std::string_view name) const
{
    return slots_[Find(name, Hash(name))].id;
}

// The slot that holds a name, or the one to put it in.
std::size_t NameNumbers::Find(std::string_view name, std::uint32_t hash) const
{
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = hash & mask;
    while (slots_[i].id != kFree && (slots_[i].hash != hash || Text(slots_[i].id) != name)) {
        i = (i + 1) & mask;
    }
    return i;
}

std::string_view NameNumbers::Text(Id id) const
{
    return std::string_view(text_).substr(ends_[id], ends_[id + 1] - ends_[id]);
}

void NameNumbers::Resize(std::size_t names)
{
    std::size_t size = kSlotsEach;
    while (size <= names * kSlotsEach) {
        size *= 2;
    }
    std::vector<Slot> old(size, Slot{0, kFree});
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.id != kFree) {
            slots_[Find(Text(slot.id), slot.hash)] = slot;
        }
    }
}

} // namespace startplan
