#include "depend/table_index.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "depend/name_patterns.h"
#include "depend/short_text.h"

namespace startplan {

namespace {

// Sorting the keys costs about as much as this many walks over them (bench_builders measures both).
constexpr std::size_t kIndexPaysFrom = 32;

} // namespace

const TableEntry* FindByWalk(const DependsMap& table, std::string_view name)
{
    for (const TableEntry& entry : table) {
        if (MatchesPattern(entry.first, name)) {
            return &entry;
        }
    }
    return nullptr;
}

NameFinder::NameFinder(const DependsMap& table, std::size_t requests)
    : table_(table), isIndexed_(requests >= kIndexPaysFrom)
{
    if (isIndexed_) {
        Build();
    }
}

void NameFinder::Build()
{
    entries_.reserve(table_.size());
    std::vector<std::pair<std::string_view, std::size_t>> byLiteral;
    byLiteral.reserve(table_.size());
    for (const TableEntry& entry : table_) {
        const std::size_t position = entries_.size();
        entries_.push_back(&entry);
        const std::string_view literal =
            HasMatchableLength(entry.first) ? LeadingLiteral(entry.first) : std::string_view();
        if (literal.empty()) {
            always_.push_back(position);
        } else {
            byLiteral.emplace_back(literal, position);
        }
    }
    std::sort(byLiteral.begin(), byLiteral.end());
    positions_.reserve(byLiteral.size());
    for (const auto& [literal, position] : byLiteral) {
        if (literals_.empty() || literals_.back().text != literal) {
            literals_.push_back({literal, positions_.size(), kNone});
        }
        positions_.push_back(position);
    }
    LinkPrefixes();
}

// In ascending order a literal's prefixes all stand before it, and the longest of them is its neighbour or
// one of that neighbour's own prefixes.
void NameFinder::LinkPrefixes()
{
    for (std::size_t i = 1; i < literals_.size(); ++i) {
        std::size_t candidate = i - 1;
        while (candidate != kNone && !BeginsWith(literals_[i].text, literals_[candidate].text)) {
            candidate = literals_[candidate].prefix;
        }
        literals_[i].prefix = candidate;
    }
}

// By the same argument as above, with the name in the place of a literal.
std::size_t NameFinder::LongestPrefixOf(std::string_view name) const
{
    const auto behind =
        std::upper_bound(literals_.begin(), literals_.end(), name,
                         [](std::string_view text, const Literal& literal) { return text < literal.text; });
    std::size_t candidate =
        behind == literals_.begin() ? kNone : static_cast<std::size_t>(behind - literals_.begin()) - 1;
    while (candidate != kNone && !BeginsWith(name, literals_[candidate].text)) {
        candidate = literals_[candidate].prefix;
    }
    return candidate;
}

const TableEntry* NameFinder::Find(std::string_view name)
{
    if (!isIndexed_ || !HasMatchableLength(name)) {
        return FindByWalk(table_, name);
    }
    candidates_.clear();
    candidates_.emplace_back(always_.begin(), always_.end());
    for (std::size_t i = LongestPrefixOf(name); i != kNone; i = literals_[i].prefix) {
        const std::size_t end = i + 1 < literals_.size() ? literals_[i + 1].firstPosition : positions_.size();
        candidates_.emplace_back(PositionAt(literals_[i].firstPosition), PositionAt(end));
    }
    for (std::size_t position = NextCandidate(); position != kNone; position = NextCandidate()) {
        if (MatchesPattern(entries_[position]->first, name)) {
            return entries_[position];
        }
    }
    return nullptr;
}

// The first position of all the lists, which are few, taken off its list.
std::size_t NameFinder::NextCandidate()
{
    Positions::const_iterator* first = nullptr;
    for (auto& [next, end] : candidates_) {
        if (next != end && (first == nullptr || *next < **first)) {
            first = &next;
        }
    }
    return first == nullptr ? kNone : *(*first)++;
}

DependantFinder::DependantFinder(const DependsMap& table, const std::vector<std::string>& names)
    : numbers_(names)
{
    // Which requested name has which dependant, in the table's order; then the same, name by name.
    std::vector<std::pair<NameNumbers::Id, Dependant>> links;
    std::vector<std::size_t> next(numbers_.Count() + 1, 0);
    std::vector<NameNumbers::Announced> announced;
    for (const TableEntry& entry : table) {
        const bool isRequested = numbers_.Of(entry.first) != NameNumbers::kUnknown;
        numbers_.Announce(entry.second, announced);
        for (const NameNumbers::Announced& dependency : announced) {
            const NameNumbers::Id id = numbers_.Of(dependency);
            if (id != NameNumbers::kUnknown) {
                links.push_back({id, {&entry.first, isRequested}});
                ++next[id + 1];
            }
        }
    }
    std::partial_sum(next.begin(), next.end(), next.begin());
    dependants_.resize(links.size());
    for (const auto& [id, dependant] : links) {
        dependants_[next[id]++] = dependant;
    }
    ends_ = std::move(next);
}

DependantFinder::Dependants DependantFinder::Find(std::string_view name) const
{
    const NameNumbers::Id id = numbers_.Of(name);
    const Dependant* all = dependants_.data();
    return {all + (id == 0 ? 0 : ends_[id - 1]), all + ends_[id]};
}

} // namespace startplan
