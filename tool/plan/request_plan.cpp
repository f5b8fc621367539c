#include "tool/plan/request_plan.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "startplan/depend_graph.h"
#include "startplan/result_codes.h"
#include "tool/library/table_lookup.h"

namespace tool {

namespace {

constexpr std::string_view kPulledInLine =
    "ParseAndDepend GetStartGraph  %s depend  %s is not in startAppNames";
constexpr std::string_view kLeftRunningLine = "ParseAndDepend GetTermGraph %s is not in termAppNames";

// Both a pattern's entry and the name in the request are compared literally, as the library does.
std::vector<std::string> RequestedAmong(const std::set<std::string>& names,
                                        const std::set<std::string>& requested)
{
    std::vector<std::string> both;
    std::set_intersection(names.begin(), names.end(), requested.begin(), requested.end(),
                          std::back_inserter(both));
    return both;
}

void ReadPulledIn(const Configuration& configuration, RequestPlan& plan)
{
    const ParseAndDepend::DependsMap& table = configuration.library.GetApplicationDependsMap();
    std::map<std::string, std::vector<std::string>> neededBy;
    for (const LogLine& line : plan.lines) {
        if (line.format == kPulledInLine && line.arguments.size() == 2) {
            neededBy[line.arguments[1]].push_back(line.arguments[0]);
        }
    }
    for (auto& [name, users] : neededBy) {
        PulledIn one{name, std::move(users), {}};
        std::sort(one.neededBy.begin(), one.neededBy.end());
        one.neededBy.erase(std::unique(one.neededBy.begin(), one.neededBy.end()), one.neededBy.end());
        // Found as it was checked when the configuration was read: literally, a pattern as well.
        const auto entry = table.find(name);
        if (entry != table.end()) {
            one.notAwaited.assign(entry->second.begin(), entry->second.end());
        }
        plan.pulledIn.push_back(std::move(one));
    }
}

void ReadLeftRunning(const Configuration& configuration, RequestPlan& plan)
{
    const ParseAndDepend::DependsMap& table = configuration.library.GetApplicationDependsMap();
    const std::set<std::string> requested(plan.names.begin(), plan.names.end());
    std::set<std::string> names;
    for (const LogLine& line : plan.lines) {
        if (line.format == kLeftRunningLine && line.arguments.size() == 1) {
            names.insert(line.arguments[0]);
        }
    }
    for (const std::string& name : names) {
        const auto entry = table.find(name);
        if (entry != table.end()) {
            plan.leftRunning.push_back({name, RequestedAmong(entry->second, requested)});
        }
    }
}

void AddStartWaits(const ParseAndDepend& library, const std::vector<std::string>& names, Waits& waits)
{
    const std::set<std::string_view> requested(names.begin(), names.end());
    const auto entries = EntriesServing(library, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (entries[i] == nullptr) {
            continue;
        }
        const std::set<std::string>& depends = entries[i]->second;
        waits[names[i]] = depends;
        for (const std::string& name : depends) {
            if (requested.count(name) == 0) {
                waits[name];
            }
        }
    }
}

// Found by the look-up, whatever serves them; but who waits for them is compared literally.
void AddStopWaits(const ParseAndDepend& library, const std::vector<std::string>& names, Waits& waits)
{
    const auto entries = EntriesServing(library, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (entries[i] != nullptr) {
            waits[names[i]];
        }
    }
    const ParseAndDepend::DependsMap& table = library.GetApplicationDependsMap();
    for (const std::string& name : names) {
        const auto entry = table.find(name);
        if (entry == table.end()) {
            continue;
        }
        for (const std::string& needed : entry->second) {
            const auto one = waits.find(needed);
            if (one != waits.end()) {
                one->second.insert(name);
            }
        }
    }
}

void HandOut(DependGraph& graph, RequestPlan& plan)
{
    std::set<std::string> handedOut;
    while (!graph.IsEmpty()) {
        const std::set<std::string> round = graph.GetNoDependVertices();
        if (round.empty()) {
            break;
        }
        for (const std::string& name : round) {
            graph.Pop(name);
            handedOut.insert(name);
        }
        plan.rounds.emplace_back(round.begin(), round.end());
    }
    std::set<std::string> missing(plan.names.begin(), plan.names.end());
    for (const std::string& name : plan.notFound) {
        missing.erase(name);
    }
    std::set_difference(missing.begin(), missing.end(), handedOut.begin(), handedOut.end(),
                        std::back_inserter(plan.neverHandedOut));
}

void KeepFirsts(std::vector<std::string>& names)
{
    std::set<std::string> seen;
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&seen](const std::string& name) { return !seen.insert(name).second; }),
                names.end());
}

} // namespace

std::uint32_t FillGraph(const ParseAndDepend& library, RequestKind kind,
                        const std::vector<std::string>& names, DependGraph& graph,
                        std::vector<std::string>& notFound)
{
    return kind == RequestKind::START ? library.GetStartGraphWithErrApp(names, graph, notFound)
                                      : library.GetTermGraphWithErrApp(names, graph, notFound);
}

Waits RequestWaits(const ParseAndDepend& library, RequestKind kind, const std::vector<std::string>& names)
{
    Waits waits;
    if (kind == RequestKind::START) {
        AddStartWaits(library, names, waits);
    } else {
        AddStopWaits(library, names, waits);
    }
    return waits;
}

RequestPlan FillPlan(const Configuration& configuration, RequestKind kind, std::vector<std::string> names,
                     DependGraph& graph)
{
    RequestPlan plan;
    plan.kind = kind;
    plan.names = std::move(names);
    LogCollector log;
    plan.result = FillGraph(configuration.library, kind, plan.names, graph, plan.notFound);
    plan.lines = log.Take();
    KeepFirsts(plan.notFound);
    ReadPulledIn(configuration, plan);
    ReadLeftRunning(configuration, plan);
    if (plan.result == PARSE_ERR_GRAPH_CYCLE) {
        const Waits waits = RequestWaits(configuration.library, plan.kind, plan.names);
        plan.cycles = FindCycles(waits);
        plan.blocked = BlockedBy(waits, plan.cycles);
    }
    return plan;
}

RequestPlan MakePlan(const Configuration& configuration, RequestKind kind, std::vector<std::string> names)
{
    DependGraph graph;
    RequestPlan plan = FillPlan(configuration, kind, std::move(names), graph);
    if (plan.result != PARSE_ERR_GRAPH_CYCLE) {
        const LogCollector unheard;
        HandOut(graph, plan);
    }
    return plan;
}

std::vector<std::string> AllNames(const Configuration& configuration)
{
    std::vector<std::string> names;
    for (const ApplicationManifest& app : configuration.apps) {
        if (!configuration.library.IsDynamicPara(app.GetAppName())) {
            names.push_back(app.GetAppName());
        }
    }
    KeepFirsts(names);
    return names;
}

std::vector<std::string> Closure(const Configuration& configuration, RequestKind kind,
                                 const std::vector<std::string>& names)
{
    std::set<std::string> seen(names.begin(), names.end());
    std::set<std::string> added;
    std::vector<std::string> frontier = names;
    while (!frontier.empty()) {
        DependGraph graph;
        std::vector<std::string> notFound;
        LogCollector log;
        FillGraph(configuration.library, kind, frontier, graph, notFound);
        for (const std::string& name : notFound) {
            added.erase(name); // nothing is configured under that name, so it cannot be requested
        }
        frontier.clear();
        for (const LogLine& line : log.Take()) {
            const bool isNext = line.format == kPulledInLine || line.format == kLeftRunningLine;
            if (isNext && !line.arguments.empty() && seen.insert(line.arguments.back()).second) {
                frontier.push_back(line.arguments.back());
                added.insert(line.arguments.back());
            }
        }
    }
    std::vector<std::string> all = names;
    all.insert(all.end(), added.begin(), added.end());
    return all;
}

} // namespace tool
