#ifndef STARTPLAN_DEPEND_TABLE_INDEX_H
#define STARTPLAN_DEPEND_TABLE_INDEX_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "depend/name_numbers.h"
#include "startplan/parse_and_depend.h"

// Indexes over the dependency table and over a request, built for one call. Each finds what a walk over
// the table finds, and makes the same log lines in the same order.
namespace startplan {

using DependsMap = ParseAndDepend::DependsMap;
using TableEntry = DependsMap::value_type;

// The first entry in the table's order whose key matches `name`; null where none does.
const TableEntry* FindByWalk(const DependsMap& table, std::string_view name);

// Answers FindByWalk() for many names.
//
// Only a key whose leading literal the name begins with can match it, or can log anything about it; and a
// key of an impossible length, which logs one line for every name. So the keys are sorted by their leading
// literals, those that begin a name lie on one chain of ever shorter literals, and the few keys on it are
// tried in the table's order. A name of an impossible length is walked, for each key logs it.
class NameFinder {
public:
    // `requests` is how many names will be asked for: an index pays only from a certain number on.
    NameFinder(const DependsMap& table, std::size_t requests);
    NameFinder(const NameFinder&) = delete;
    NameFinder& operator=(const NameFinder&) = delete;

    const TableEntry* Find(std::string_view name);

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // Places in the table's order, ascending.
    using Positions = std::vector<std::size_t>;

    // A leading literal and the keys that share it.
    struct Literal {
        std::string_view text;
        std::size_t firstPosition = 0; // in positions_; they end where the next literal's begin
        std::size_t prefix = kNone;    // the longest other literal that this one begins with
    };

    void Build();
    void LinkPrefixes();
    std::size_t LongestPrefixOf(std::string_view name) const;
    std::size_t NextCandidate();
    Positions::const_iterator PositionAt(std::size_t index) const
    {
        return positions_.begin() + static_cast<std::ptrdiff_t>(index);
    }

    const DependsMap& table_;
    bool isIndexed_;
    std::vector<const TableEntry*> entries_; // in the table's order
    Positions always_;                       // of the keys that every name is tried against
    std::vector<Literal> literals_;          // in ascending byte order
    Positions positions_;                    // of each literal's keys, one literal behind the other

    // What is left of the lists of candidates for the name at hand; kept for its storage.
    std::vector<std::pair<Positions::const_iterator, Positions::const_iterator>> candidates_;
};

// For each name of a request, the table's keys that depend on it, in the table's order.
class DependantFinder {
public:
    struct Dependant {
        const std::string* name = nullptr;
        bool isRequested = false;
    };
    struct Dependants {
        const Dependant* begin() const { return first; }
        const Dependant* end() const { return behind; }

        const Dependant* first = nullptr;
        const Dependant* behind = nullptr;
    };

    DependantFinder(const DependsMap& table, const std::vector<std::string>& names);

    // Of a name of the request.
    Dependants Find(std::string_view name) const;

private:
    NameNumbers numbers_;
    std::vector<Dependant> dependants_; // of name 0, then of name 1, ...
    std::vector<std::size_t> ends_;     // where in dependants_ each name's end
};

} // namespace startplan

#endif
