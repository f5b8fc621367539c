#ifndef STARTPLAN_TOOL_SIMULATION_SIMULATION_H
#define STARTPLAN_TOOL_SIMULATION_SIMULATION_H

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "startplan/depend_graph.h"
#include "tool/configuration/configuration.h"
#include "tool/plan/graph_view.h"
#include "tool/plan/request_plan.h"
#include "tool/simulation/time_line.h"

namespace tool {

// How long the start, or stop, of a name takes.
using Durations = std::function<Milliseconds(const std::string&)>;

// What the request itself does not tell.
struct SimulationSettings {
    Durations duration;
    std::size_t jobs = 0;          // how many may be under way at a time; 0 for any number
    std::set<std::string> failing; // their start, or stop, takes its time and is never done
};

// Runs a graph that the library has filled and that has no cycle: a step begins when the graph hands its
// vertex out, which is popped when the step's time is over. `waits` are the graph's own edges.
TimeLine RunTimeLine(DependGraph& graph, const GraphView& waits, const SimulationSettings& settings);

// The request's time line; empty where the library finds a cycle.
TimeLine Simulate(const ParseAndDepend& library, RequestKind kind, const std::vector<std::string>& names,
                  const SimulationSettings& settings);

// 100 ms for every start. For a stop each application's term_time_out, the longest that it may take; `names`
// are those of the request, since one that a pattern serves takes the pattern's. Refers to nothing that it
// is made from.
Durations DefaultDurations(const Configuration& configuration, RequestKind kind,
                           const std::vector<std::string>& names);

} // namespace tool

#endif
