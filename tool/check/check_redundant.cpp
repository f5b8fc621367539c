#include "tool/check/check_redundant.h"

#include <utility>

#include <fmt/format.h>

#include "startplan/parse_and_depend.h"
#include "tool/check/finding_at.h"
#include "tool/rules/rules_dependencies.h"
#include "tool/text/name_list.h"

namespace tool {

namespace {

constexpr std::size_t kStepsForEach = 64; // for each dependency, on the average
constexpr std::size_t kStepsAtLeast = 100'000;

class RedundantCheck {
public:
    RedundantCheck(const Configuration& configuration, const DependencyIndex& index,
                   const std::vector<bool>& isOnCycle, Findings& findings)
        : tree_(configuration.tree), index_(index), isOnCycle_(isOnCycle), findings_(findings),
          through_(index.Size(), kNone), neededBy_(index.Size(), kNone),
          stepsLeft_(kStepsAtLeast + kStepsForEach * index.DependencyCount())
    {
        for (const std::string_view name : index.Names()) {
            isFamily_.push_back(ParseAndDepend().IsDynamicPara(std::string(name)));
        }
    }

    void Run()
    {
        for (std::size_t name = 0; name < index_.Size() && stoppedAt_ == kNone; ++name) {
            CheckName(name);
        }
        if (count_ > kMostFindings) {
            AddSummary();
        }
        if (stoppedAt_ != kNone) {
            AddStop();
        }
    }

private:
    // No request holds a family's own name, so nobody waits through it. On a cycle each is needed by all.
    bool Passes(std::size_t target) const
    {
        return target != kNone && !isFamily_[target] && !isOnCycle_[target] && !index_.IsDropped(target);
    }

    void CheckName(std::size_t name)
    {
        if (isOnCycle_[name] || index_.IsDropped(name)) {
            return;
        }
        const DependencyIndex::Dependencies dependencies = index_.DependenciesOf(name);
        for (const DependencyIndex::Dependency& dependency : dependencies) {
            if (dependency.target != kNone) {
                neededBy_[dependency.target] = name;
            }
        }
        const DependencyIndex::Dependency* first = nullptr;
        std::vector<std::string_view> redundant;
        MarkSecondStep(name, dependencies);
        for (const DependencyIndex::Dependency& dependency : dependencies) {
            if (dependency.target != kNone && through_[dependency.target] != kNone) {
                first = first == nullptr ? &dependency : first;
                redundant.push_back(index_.Names()[dependency.target]);
            }
        }
        if (first != nullptr && ++count_ <= kMostFindings) {
            Add(name, *first, redundant);
        } else if (first != nullptr && count_ == kMostFindings + 1) {
            next_ = {name, first};
        }
        for (const DependencyIndex::Dependency& dependency : dependencies) {
            if (dependency.target != kNone) {
                through_[dependency.target] = kNone;
            }
        }
    }

    void MarkSecondStep(std::size_t name, const DependencyIndex::Dependencies& dependencies)
    {
        for (const DependencyIndex::Dependency& dependency : dependencies) {
            if (!Passes(dependency.target)) {
                continue;
            }
            for (const DependencyIndex::Dependency& further : index_.DependenciesOf(dependency.target)) {
                if (stepsLeft_ == 0) {
                    stoppedAt_ = name;
                    return;
                }
                --stepsLeft_;
                if (further.target != kNone && neededBy_[further.target] == name) {
                    through_[further.target] = dependency.target;
                }
            }
        }
    }

    void Add(std::size_t name, const DependencyIndex::Dependency& first,
             const std::vector<std::string_view>& redundant)
    {
        const std::string quoted = Quote(index_.Names()[name]);
        const std::size_t through = through_[first.target];
        const std::string others =
            redundant.size() == 1 ? Quote(index_.Names()[through]) : "the other dependencies";
        Finding finding = FindingAt(
            tree_, index_.EntryOf(name).visit, *first.item, kRedundantDependency,
            {fmt::format("{} waits for {} through {} as well", quoted, QuoteSome(redundant), others),
             fmt::format(
                 "a request that names {} too has the same order without it; any other request has not",
                 others),
             fmt::format("take it out, unless {} is started or stopped without {}", quoted, others)});
        finding.related.push_back({tree_.PositionOf(index_.EntryOf(through).visit,
                                                    *index_.FindDependency(through, first.target)->item),
                                   fmt::format("{} depends on {}", Quote(index_.Names()[through]),
                                               Quote(index_.Names()[first.target]))});
        findings_.Add(std::move(finding));
    }

    void AddSummary()
    {
        const auto& [name, dependency] = next_;
        findings_.Add(FindingAt(
            tree_, index_.EntryOf(name).visit, *dependency->item, kRedundantDependency,
            {fmt::format("{}{} applications more have such dependencies, {} among them; {} are shown",
                         stoppedAt_ == kNone ? "" : "at least ", count_ - kMostFindings,
                         Quote(index_.Names()[name]), kMostFindings),
             "", ""}));
    }

    void AddStop()
    {
        const SourceEntry& entry = index_.EntryOf(stoppedAt_);
        findings_.Add(FindingAt(tree_, entry.visit, entry.key, kRedundantDependency,
                                {fmt::format("the dependencies of {} and of the names behind it, in "
                                             "alphabetical order, were not looked at: there are too many",
                                             Quote(index_.Names()[stoppedAt_])),
                                 "", ""}));
    }

    const SourceTree& tree_;
    const DependencyIndex& index_;
    const std::vector<bool>& isOnCycle_;
    Findings& findings_;
    std::vector<bool> isFamily_;
    std::vector<std::size_t> through_;  // for the dependencies of the name at hand: the way round
    std::vector<std::size_t> neededBy_; // the last name that was seen to depend on each
    std::size_t stepsLeft_;
    std::size_t stoppedAt_ = kNone; // the name at which the steps were used up
    std::size_t count_ = 0;         // applications with such dependencies
    std::pair<std::size_t, const DependencyIndex::Dependency*> next_; // the first one that is not shown
};

} // namespace

void CheckRedundant(const Configuration& configuration, const DependencyIndex& index,
                    const std::vector<bool>& isOnCycle, Findings& findings)
{
    RedundantCheck(configuration, index, isOnCycle, findings).Run();
}

} // namespace tool
