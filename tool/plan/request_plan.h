#ifndef STARTPLAN_TOOL_PLAN_REQUEST_PLAN_H
#define STARTPLAN_TOOL_PLAN_REQUEST_PLAN_H

#include <cstdint>
#include <string>
#include <vector>

#include "tool/configuration/configuration.h"
#include "tool/library/log_collector.h"
#include "tool/plan/cycles.h"

class DependGraph;

namespace tool {

enum class RequestKind { START, STOP };

// A dependency outside a start request: the library starts it, too, but nothing before it.
struct PulledIn {
    std::string name;
    std::vector<std::string> neededBy;   // requested names
    std::vector<std::string> notAwaited; // what it depends on itself
};

// A dependant outside a stop request: it keeps running without what it depends on.
struct LeftRunning {
    std::string name;
    std::vector<std::string> dependsOn; // requested names
};

// What the library makes of one request: its real graph, popped round by round.
struct RequestPlan {
    RequestKind kind = RequestKind::START;
    std::vector<std::string> names; // as requested
    std::uint32_t result = 0;
    LogLines lines;
    std::vector<std::vector<std::string>> rounds;
    std::vector<std::string> notFound;       // each once, in the order of the request
    std::vector<PulledIn> pulledIn;          // ascending
    std::vector<LeftRunning> leftRunning;    // ascending
    std::vector<std::string> neverHandedOut; // found, but not in any round though there is no cycle
    // Why the library reports a cycle, by "waits for": of a start the direction of "depends", of a stop
    // the other one. Empty although result says so: a requested name that is missing was taken for one.
    std::vector<Cycle> cycles;
    std::vector<std::string> blocked; // behind the cycles
};

// Asks the library for the request's graph, with the names not found as they come.
std::uint32_t FillGraph(const ParseAndDepend& library, RequestKind kind,
                        const std::vector<std::string>& names, DependGraph& graph,
                        std::vector<std::string>& notFound);

// Who waits for whom in that graph, as plain data. Every name found is a key, and so is what a start pulls
// in; a requested name that is not found is none, though others may wait for it.
Waits RequestWaits(const ParseAndDepend& library, RequestKind kind, const std::vector<std::string>& names);

// The request's graph and all but the rounds, which are left to the caller to hand out.
RequestPlan FillPlan(const Configuration& configuration, RequestKind kind, std::vector<std::string> names,
                     DependGraph& graph);

RequestPlan MakePlan(const Configuration& configuration, RequestKind kind, std::vector<std::string> names);

// Every application whose name is no pattern, each once, in the library's order.
std::vector<std::string> AllNames(const Configuration& configuration);

// The names and all that they need (start) or that need them (stop), in the end; by what the library
// itself warns of. The given names come first, the added ones ascending.
std::vector<std::string> Closure(const Configuration& configuration, RequestKind kind,
                                 const std::vector<std::string>& names);

} // namespace tool

#endif
