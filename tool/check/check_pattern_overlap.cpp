#include "tool/check/check_pattern_overlap.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "tool/check/finding_at.h"
#include "tool/patterns/overlap_search.h"
#include "tool/rules/rules_patterns.h"
#include "tool/text/name_list.h"

namespace tool {

namespace {

using Overlap = OverlapSearch::Overlap;

constexpr std::size_t kMostSearchSteps = 3'000'000;

class PatternOverlapCheck {
public:
    PatternOverlapCheck(const Configuration& configuration, const std::vector<TableKey>& keys,
                        Findings& findings)
        : configuration_(configuration), tree_(configuration.tree), keys_(keys), findings_(findings)
    {}

    void Run()
    {
        OverlapSearch search(keys_, kMostSearchSteps);
        const std::vector<Overlap> overlaps = search.Run();
        std::size_t patterns = 0;
        const Overlap* next = nullptr;
        for (auto begin = overlaps.begin(); begin != overlaps.end();) {
            const auto end = std::find_if(begin, overlaps.end(), [&begin](const Overlap& overlap) {
                return overlap.pattern != begin->pattern;
            });
            if (++patterns <= kMostFindings) {
                AddPattern(&*begin, &*begin + (end - begin));
            } else if (next == nullptr) {
                next = &*begin;
            }
            begin = end;
        }
        if (next != nullptr) {
            AddAt(next->pattern, kPatternOverlap,
                  {fmt::format("{} more patterns overlap with others, {} among them; {} are shown",
                               patterns - kMostFindings, Quote(*keys_[next->pattern].name), kMostFindings),
                   "as for the others: which entry a request gets is not defined",
                   "make the patterns differ in their numbers, or in the text in front of the first \"<\""});
        }
        if (search.StoppedAt()) {
            AddAt(*search.StoppedAt(), kOverlapLimit,
                  {"too many patterns begin with the same text: the search for overlaps stopped here",
                   "names that match two entries may remain unseen",
                   "make the patterns differ in the text in front of the first \"<\""});
        }
    }

private:
    void AddPattern(const Overlap* begin, const Overlap* end)
    {
        const std::string pattern = Quote(*keys_[begin->pattern].name);
        const std::string other = Quote(*keys_[begin->other].name);
        const std::string name = Quote(begin->name);
        const std::string more =
            end - begin == 1 ? "" : fmt::format("; {} more overlap with {}", end - begin - 1, pattern);
        std::vector<Place> related;
        for (const Overlap* overlap = begin; overlap != end && related.size() < kMostRelated; ++overlap) {
            if (const SourceEntry* entry = EntryOf(configuration_, keys_[overlap->other])) {
                related.push_back(
                    {tree_.PositionOf(*entry),
                     fmt::format("{} matches {}", Quote(*keys_[overlap->other].name), Quote(overlap->name))});
            }
        }
        AddAt(begin->pattern, kPatternOverlap,
              {(name == other ? fmt::format("{} also matches {}", pattern, other)
                              : fmt::format("{} and {} both match {}", pattern, other, name)) +
                   more,
               fmt::format("which of the two a request for {} gets is not defined, so its settings and "
                           "dependencies are not, either",
                           name),
               "make them differ in their numbers, or in the text in front of the first \"<\""},
              std::move(related));
    }

    void AddAt(std::size_t key, const Rule& rule, Wording wording, std::vector<Place> related = {})
    {
        if (const SourceEntry* entry = EntryOf(configuration_, keys_[key])) {
            Finding finding = FindingAt(tree_, entry->visit, entry->key, rule, std::move(wording));
            finding.related = std::move(related);
            findings_.Add(std::move(finding));
        }
    }

    const Configuration& configuration_;
    const SourceTree& tree_;
    const std::vector<TableKey>& keys_;
    Findings& findings_;
};

} // namespace

void CheckPatternOverlap(const Configuration& configuration, const std::vector<TableKey>& keys,
                         Findings& findings)
{
    PatternOverlapCheck(configuration, keys, findings).Run();
}

} // namespace tool
