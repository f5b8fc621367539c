#include "tool/commands/configuration_diff.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include <nlohmann/json.hpp>

#include "startplan/depend_graph.h"
#include "startplan/result_codes.h"
#include "tool/keys/settings.h"
#include "tool/plan/graph_view.h"
#include "tool/simulation/simulation.h"

namespace tool {

namespace {

// What is in the one and not in the other; both ascending.
template <class Sorted>
std::vector<typename Sorted::value_type> Without(const Sorted& one, const Sorted& other)
{
    std::vector<typename Sorted::value_type> rest;
    std::set_difference(one.begin(), one.end(), other.begin(), other.end(), std::back_inserter(rest));
    return rest;
}

// The dependencies of the one table that the other one does not hold, ascending.
std::vector<NamePair> EdgesWithout(const Configuration& one, const Configuration& other)
{
    const ParseAndDepend::DependsMap& others = other.library.GetApplicationDependsMap();
    std::vector<NamePair> edges;
    for (const auto& [name, depends] : one.library.GetApplicationDependsMap()) {
        const auto found = others.find(name);
        for (const std::string& needed : depends) {
            if (found == others.end() || found->second.count(needed) == 0) {
                edges.emplace_back(name, needed);
            }
        }
    }
    std::sort(edges.begin(), edges.end());
    return edges;
}

std::set<NamePair> DroppedOf(const Configuration& configuration)
{
    std::set<NamePair> dropped;
    for (const MissingDependency& one : configuration.missing) {
        dropped.emplace(one.application, one.dependency);
    }
    return dropped;
}

std::set<std::string> IncompleteOf(const Configuration& configuration)
{
    std::set<std::string> names;
    for (const IncompleteEntry& one : configuration.incomplete) {
        const SourceEntry& entry = configuration.tree.Entries()[one.entry];
        names.emplace(configuration.tree.FileOf(entry).Text(entry.key));
    }
    return names;
}

std::set<std::string> NamesOf(const Configuration& configuration)
{
    std::set<std::string> names;
    for (const auto& [name, app] : configuration.appByName) {
        names.insert(name);
    }
    return names;
}

// From the folder of the top-level file, if it lies below that.
std::string BelowTop(const Configuration& configuration, const std::string& path)
{
    const std::string& top = configuration.request.top;
    const std::size_t slash = top.rfind('/');
    if (slash == std::string::npos || path.compare(0, slash + 1, top, 0, slash + 1) != 0) {
        return path;
    }
    return path.substr(slash + 1);
}

// A mapping in the file, so its order is nobody's.
Json SortedGroups(Json groups)
{
    std::stable_sort(groups.begin(), groups.end(),
                     [](const Json& a, const Json& b) { return a.at("group") < b.at("group"); });
    return groups;
}

Json ValueOf(const Configuration& configuration, const Setting& setting, const ApplicationManifest& app)
{
    const std::string_view name = setting.name;
    if (name == "file") {
        return BelowTop(configuration, app.GetCfgPath());
    }
    return name == "sharepool_groups" ? SortedGroups(setting.value(app)) : setting.value(app);
}

// The records of each name, in the library's order.
using Records = std::map<std::string, std::vector<const ApplicationManifest*>>;

Records RecordsOf(const Configuration& configuration)
{
    Records records;
    for (const ApplicationManifest& app : configuration.apps) {
        records[app.GetAppName()].push_back(&app);
    }
    return records;
}

class Comparison {
public:
    Comparison(const Configuration& before, const Configuration& after) : before_(before), after_(after) {}

    std::vector<AppChange> Changes() const
    {
        const Records before = RecordsOf(before_);
        const Records after = RecordsOf(after_);
        std::vector<AppChange> changes;
        for (const auto& [name, records] : before) {
            const auto found = after.find(name);
            if (found == after.end()) {
                continue;
            }
            AppChange change = ChangeOf(name, records, found->second);
            if (!change.settings.empty() || !change.dependsAdded.empty() || !change.dependsRemoved.empty()) {
                changes.push_back(std::move(change));
            }
        }
        return changes;
    }

private:
    // Of a name that is there several times the last record is compared, whose dependencies count.
    AppChange ChangeOf(const std::string& name, const Records::mapped_type& before,
                       const Records::mapped_type& after) const
    {
        AppChange change;
        change.name = name;
        if (before.size() != after.size()) {
            change.settings.push_back({"records", before.size(), after.size()});
        }
        for (const Setting& setting : Settings()) {
            if (std::string_view(setting.name) == "depends") {
                continue;
            }
            Json was = ValueOf(before_, setting, *before.back());
            Json is = ValueOf(after_, setting, *after.back());
            if (was != is) {
                change.settings.push_back({setting.name, std::move(was), std::move(is)});
            }
        }
        change.dependsAdded = Without(after.back()->GetDependList(), before.back()->GetDependList());
        change.dependsRemoved = Without(before.back()->GetDependList(), after.back()->GetDependList());
        return change;
    }

    const Configuration& before_;
    const Configuration& after_;
};

std::vector<std::string> CriticalNames(const TimeLine& line)
{
    std::vector<std::string> names;
    for (const std::size_t step : line.critical) {
        names.push_back(line.steps[step].name);
    }
    return names;
}

RequestOutcome OutcomeOf(const Configuration& configuration, RequestKind kind)
{
    RequestOutcome outcome;
    DependGraph graph;
    const RequestPlan plan = FillPlan(configuration, kind, AllNames(configuration), graph);
    outcome.result = plan.result;
    for (const Cycle& cycle : plan.cycles) {
        outcome.cycles.push_back(cycle.members);
    }
    if (plan.result == PARSE_ERR_GRAPH_CYCLE) {
        return outcome;
    }
    const Waits waits = RequestWaits(configuration.library, kind, plan.names);
    const GraphView view = ViewOf(waits);
    SimulationSettings settings;
    settings.duration = [](const std::string& /*name*/) { return Milliseconds{1}; }; // so a start is a round
    const TimeLine byRound = RunTimeLine(graph, view, settings);
    for (const Step& step : byRound.steps) {
        outcome.roundOf[step.name] = static_cast<std::size_t>(step.start) + 1;
    }
    outcome.rounds = static_cast<std::size_t>(byRound.makespan);
    const Durations times = DefaultDurations(configuration, kind, plan.names);
    if (kind == RequestKind::START) { // all take the same time
        outcome.makespan = byRound.makespan * times("");
        outcome.critical = CriticalNames(byRound);
        return outcome;
    }
    settings.duration = times;
    DependGraph again;
    again.Update(waits);
    const TimeLine line = RunTimeLine(again, view, settings);
    outcome.makespan = line.makespan;
    outcome.critical = CriticalNames(line);
    return outcome;
}

RequestChange CompareRequests(const Configuration& before, const Configuration& after, RequestKind kind)
{
    RequestChange change;
    change.before = OutcomeOf(before, kind);
    change.after = OutcomeOf(after, kind);
    const bool hasCycle =
        change.before.result == PARSE_ERR_GRAPH_CYCLE || change.after.result == PARSE_ERR_GRAPH_CYCLE;
    for (const auto& [name, app] : before.appByName) {
        const bool isInBoth = after.appByName.count(name) != 0;
        if (isInBoth && !hasCycle && change.before.RoundOf(name) != change.after.RoundOf(name)) {
            change.moved.push_back(name);
        }
    }
    return change;
}

} // namespace

std::size_t RequestOutcome::RoundOf(const std::string& name) const
{
    const auto found = roundOf.find(name);
    return found == roundOf.end() ? 0 : found->second;
}

bool RequestChange::IsSame() const
{
    return moved.empty() &&
           std::tie(before.result, before.cycles, before.rounds, before.makespan, before.critical) ==
               std::tie(after.result, after.cycles, after.rounds, after.makespan, after.critical);
}

bool ConfigurationDiff::IsSame() const
{
    return resultBefore == resultAfter && added.empty() && removed.empty() && changed.empty() &&
           edgesAdded.empty() && edgesRemoved.empty() && droppedAdded.empty() && droppedRemoved.empty() &&
           incompleteAdded.empty() && incompleteRemoved.empty() && start.IsSame() && stop.IsSame();
}

ConfigurationDiff Compare(const Configuration& before, const Configuration& after)
{
    ConfigurationDiff diff;
    diff.resultBefore = before.result;
    diff.resultAfter = after.result;
    diff.added = Without(NamesOf(after), NamesOf(before));
    diff.removed = Without(NamesOf(before), NamesOf(after));
    diff.changed = Comparison(before, after).Changes();
    diff.edgesAdded = EdgesWithout(after, before);
    diff.edgesRemoved = EdgesWithout(before, after);
    diff.droppedAdded = Without(DroppedOf(after), DroppedOf(before));
    diff.droppedRemoved = Without(DroppedOf(before), DroppedOf(after));
    diff.incompleteAdded = Without(IncompleteOf(after), IncompleteOf(before));
    diff.incompleteRemoved = Without(IncompleteOf(before), IncompleteOf(after));
    diff.start = CompareRequests(before, after, RequestKind::START);
    diff.stop = CompareRequests(before, after, RequestKind::STOP);
    return diff;
}

} // namespace tool
