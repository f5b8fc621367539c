#include "tool/commands/explanation.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "tool/library/log_collector.h"
#include "tool/library/result_names.h"
#include "tool/patterns/name_match.h"

namespace tool {

namespace {

constexpr std::string_view kNoUid = "4294967295"; // an entry with this uid is incomplete

// By the values that the library logs.
std::string ReasonOfIncompleteness(const Configuration& configuration, const std::string& name,
                                   std::size_t entry)
{
    std::vector<std::string> reasons;
    for (const IncompleteEntry& one : configuration.incomplete) {
        if (one.entry != entry) {
            continue;
        }
        if (name.empty()) {
            reasons.emplace_back("its name is empty");
        }
        if (one.binPath.empty()) {
            reasons.emplace_back("it has no bin_path");
        }
        if (one.uid == kNoUid) {
            reasons.push_back(fmt::format("its uid is {}", kNoUid));
        }
    }
    return fmt::format("{}", fmt::join(reasons, ", "));
}

std::vector<std::string> MissingOf(const Configuration& configuration, const std::string& name)
{
    std::vector<std::string> names;
    for (const MissingDependency& one : configuration.missing) {
        if (one.application == name) {
            names.push_back(one.dependency);
        }
    }
    return names;
}

std::vector<EntryFate> FatesOf(const Configuration& configuration, const std::string& name)
{
    std::vector<EntryFate> fates;
    for (const std::size_t entry : configuration.tree.EntriesNamed(name)) {
        EntryFate fate;
        fate.entry = entry;
        fate.state = configuration.entryStates[entry];
        if (fate.state == EntryState::INCOMPLETE) {
            fate.reason = ReasonOfIncompleteness(configuration, name, entry);
        } else if (fate.state == EntryState::DROPPED) {
            fate.missing = MissingOf(configuration, name);
        } else if (fate.state == EntryState::UNREAD) {
            fate.reason = fmt::format("the library's result is {}", ResultText(configuration.result));
        }
        fates.push_back(std::move(fate));
    }
    bool isLast = true;
    for (auto fate = fates.rbegin(); fate != fates.rend(); ++fate) {
        const bool isTaken = fate->state == EntryState::KEPT || fate->state == EntryState::DROPPED;
        fate->isOverruled = isTaken && !isLast;
        isLast = isLast && !isTaken;
    }
    return fates;
}

// A name that nothing serves is not requested: what the library makes of such a one is not defined where
// others wait for it.
RoundFate FateIn(const Configuration& configuration, RequestKind kind, const std::string& name, bool isServed)
{
    RoundFate fate;
    std::vector<std::string> names = AllNames(configuration);
    if (isServed && std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(name);
    }
    fate.plan = MakePlan(configuration, kind, names);
    std::unordered_map<std::string, std::size_t> roundOf;
    for (std::size_t round = 0; round < fate.plan.rounds.size(); ++round) {
        for (const std::string& one : fate.plan.rounds[round]) {
            roundOf[one] = round + 1;
        }
    }
    const auto found = roundOf.find(name);
    if (found == roundOf.end()) {
        return fate;
    }
    fate.round = found->second;
    const GraphView waits = ViewOf(RequestWaits(configuration.library, kind, names));
    std::string at = name;
    fate.because = {at};
    for (std::size_t round = fate.round; round > 1; --round) {
        for (const Vertex needed : waits.needs[waits.Find(at)]) {
            if (roundOf[waits.names[needed]] == round - 1) {
                at = waits.names[needed];
                fate.because.push_back(at);
                break;
            }
        }
    }
    std::reverse(fate.because.begin(), fate.because.end());
    return fate;
}

std::string KeyServing(const Configuration& configuration, const std::string& name)
{
    const LogCollector unheard;
    const auto found = configuration.library.GetAppFromDependsMap(name);
    return found == configuration.library.GetApplicationDependsMap().end() ? std::string() : found->first;
}

} // namespace

std::size_t VertexFor(const Configuration& configuration, const GraphView& graph, const std::string& name)
{
    const std::size_t own = graph.Find(name);
    return own != kNone ? own : graph.Find(KeyServing(configuration, name));
}

Explanation Explain(const Configuration& configuration, const std::string& name)
{
    Explanation all;
    all.name = name;
    all.entries = FatesOf(configuration, name);
    const NameMatch match = MatchName(configuration.library, name);
    all.servedBy = match.winner.value_or("");
    for (const KeyMatch& one : match.matching) {
        if (one.key != all.servedBy) {
            all.alsoMatching.push_back(one.key);
        }
    }
    all.graph = ViewOf(configuration.library.GetApplicationDependsMap());
    const std::size_t vertex = VertexFor(configuration, all.graph, name);
    if (vertex != kNone) {
        all.needs = FindWays(all.graph.needs, static_cast<Vertex>(vertex));
        all.neededBy = FindWays(all.graph.neededBy, static_cast<Vertex>(vertex));
        for (const Vertex needed : all.graph.needs[vertex]) {
            if (!all.graph.isKnown[needed]) {
                all.unknownNeeds.push_back(all.graph.names[needed]);
            }
        }
    }
    all.start = FateIn(configuration, RequestKind::START, name, all.IsServed());
    all.stop = FateIn(configuration, RequestKind::STOP, name, all.IsServed());
    return all;
}

std::vector<Vertex> FindWay(const GraphView& graph, Vertex from, Vertex to)
{
    const Ways ways = FindWays(graph.needs, from);
    if (from != to) {
        return ways.To(to);
    }
    std::vector<Vertex> best;
    for (const Vertex last : graph.neededBy[from]) {
        std::vector<Vertex> way = ways.To(last);
        if (!way.empty() && (best.empty() || way.size() < best.size() - 1)) {
            way.push_back(to);
            best = std::move(way);
        }
    }
    return best;
}

} // namespace tool
