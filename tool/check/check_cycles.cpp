#include "tool/check/check_cycles.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "startplan/depend_graph.h"
#include "tool/check/finding_at.h"
#include "tool/check/sufferers.h"
#include "tool/library/log_collector.h"
#include "tool/plan/cycles.h"
#include "tool/rules/rules_dependencies.h"
#include "tool/text/name_list.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kMostShown = 12; // names of one cycle

// By name, to the configured names that it depends on.
Waits WaitsOf(const DependencyIndex& index)
{
    Waits waits;
    std::vector<std::size_t> targets;
    for (std::size_t name = 0; name < index.Size(); ++name) {
        targets.clear();
        for (const DependencyIndex::Dependency& dependency : index.DependenciesOf(name)) {
            if (dependency.target != kNone) {
                targets.push_back(dependency.target);
            }
        }
        // In ascending order nothing has to be searched for.
        std::sort(targets.begin(), targets.end());
        auto& row = waits.emplace_hint(waits.end(), index.Names()[name], std::set<std::string>())->second;
        for (const std::size_t target : targets) {
            row.emplace_hint(row.end(), index.Names()[target]);
        }
    }
    return waits;
}

bool LibraryFindsCycle(const Waits& waits)
{
    const LogCollector unheard;
    DependGraph graph;
    graph.Update(waits);
    return graph.HasCycle();
}

class CycleCheck {
public:
    CycleCheck(const Configuration& configuration, const DependencyIndex& index, Findings& findings)
        : tree_(configuration.tree), index_(index), findings_(findings), sufferers_(index),
          isOnCycle_(index.Size())
    {}

    std::vector<bool> Run(Waits waits)
    {
        for (std::size_t name = 0; name < index_.Size(); ++name) {
            if (const auto* dependency = index_.FindDependency(name, name)) {
                AddSelf(name, *dependency);
                waits.find(std::string(index_.Names()[name]))
                    ->second.erase(std::string(index_.Names()[name]));
            }
        }
        for (const Cycle& cycle : FindCycles(waits)) {
            AddCycle(cycle);
        }
        return std::move(isOnCycle_);
    }

private:
    bool IsFamily(std::size_t name) const
    {
        return ParseAndDepend().IsDynamicPara(std::string(index_.Names()[name]));
    }

    std::string HeldUp(const std::vector<std::size_t>& names)
    {
        const SuffererSearch::Result sufferers = sufferers_.Find(names);
        return sufferers.names.empty()
                   ? ""
                   : fmt::format("; also held up: {}", QuoteSome(sufferers.names, sufferers.isCut));
    }

    void AddSelf(std::size_t name, const DependencyIndex::Dependency& dependency)
    {
        isOnCycle_[name] = true;
        const std::string quoted = Quote(index_.Names()[name]);
        const std::string effect =
            IsFamily(name)
                ? "each member waits for the whole family, itself included"
                : fmt::format("a request that names {} ends with PARSE_ERR_GRAPH_CYCLE, and nothing of it is "
                              "handed out",
                              quoted);
        findings_.Add(FindingAt(tree_, index_.EntryOf(name).visit, *dependency.item, kSelfDependency,
                                {fmt::format("{} depends on itself", quoted), effect + HeldUp({name}),
                                 "take the name out of its own \"depends\""}));
    }

    void AddCycle(const Cycle& cycle)
    {
        std::vector<std::size_t> members;
        for (const std::string& member : cycle.members) {
            members.push_back(index_.Find(member));
            isOnCycle_[members.back()] = true;
        }
        std::vector<std::size_t> way;
        for (const std::string& name : cycle.shortest) {
            way.push_back(index_.Find(name));
        }
        way.push_back(way.front());
        Finding finding = FindingAt(tree_, index_.EntryOf(way[0]).visit, *EdgeItem(way[0], way[1]), kCycle,
                                    {"cycle: " + Chain(way) + Others(cycle), EffectOf(way) + HeldUp(members),
                                     "take one of these dependencies out"});
        for (std::size_t i = 0; i + 1 < std::min(way.size(), kMostShown + 1); ++i) {
            finding.related.push_back(
                {tree_.PositionOf(index_.EntryOf(way[i]).visit, *EdgeItem(way[i], way[i + 1])),
                 fmt::format("{} depends on {}", Quote(index_.Names()[way[i]]),
                             Quote(index_.Names()[way[i + 1]]))});
        }
        findings_.Add(std::move(finding));
    }

    const NodeUse* EdgeItem(std::size_t from, std::size_t to) const
    {
        return index_.FindDependency(from, to)->item;
    }

    std::string Chain(const std::vector<std::size_t>& way) const
    {
        std::string text;
        for (std::size_t i = 0; i < way.size(); ++i) {
            if (i == kMostShown && way.size() > kMostShown + 2) {
                text += fmt::format(" -> ({} more)", way.size() - 1 - i);
                i = way.size() - 1;
            }
            text += (i == 0 ? "" : " -> ") + Printable(index_.Names()[way[i]]);
        }
        return text;
    }

    static std::string Others(const Cycle& cycle)
    {
        return cycle.members.size() == cycle.shortest.size()
                   ? ""
                   : fmt::format(" (the shortest of several: {} applications wait for each other)",
                                 cycle.members.size());
    }

    std::string EffectOf(const std::vector<std::size_t>& way) const
    {
        for (const std::size_t name : way) {
            if (IsFamily(name)) {
                return "the library does not see this cycle, since a request holds members of a family and "
                       "not its name: the members wait for each other for ever, or start too early";
            }
        }
        std::string effect =
            "a request that names them all ends with PARSE_ERR_GRAPH_CYCLE, and nothing of it "
            "is handed out";
        for (const std::size_t name : way) {
            if (index_.IsDropped(name)) {
                return fmt::format("hidden as long as {} is dropped; after that, {}",
                                   Quote(index_.Names()[name]), effect);
            }
        }
        return effect;
    }

    const SourceTree& tree_;
    const DependencyIndex& index_;
    Findings& findings_;
    SuffererSearch sufferers_;
    std::vector<bool> isOnCycle_;
};

} // namespace

std::vector<bool> CheckCycles(const Configuration& configuration, const DependencyIndex& index,
                              Findings& findings)
{
    Waits waits = WaitsOf(index);
    if (!LibraryFindsCycle(waits)) {
        return std::vector<bool>(index.Size());
    }
    return CycleCheck(configuration, index, findings).Run(std::move(waits));
}

} // namespace tool
