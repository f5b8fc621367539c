#ifndef STARTPLAN_TOOL_SIMULATION_TIME_LINE_H
#define STARTPLAN_TOOL_SIMULATION_TIME_LINE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tool/plan/graph_view.h"

namespace tool {

using Milliseconds = std::uint64_t;

// One start or stop. Times count from the request.
struct Step {
    std::string name;
    Milliseconds ready = 0; // when the library hands it out
    Milliseconds start = 0; // later than `ready` only where it had to wait for a free job
    Milliseconds end = 0;
    // How much longer it could take before everything is done later, the order of the jobs kept.
    Milliseconds slack = 0;
    std::size_t heldBy = kNone; // the step whose end let it start; kNone for those that start at once
    bool isHeldByJob = false;   // heldBy only had to free its job
    bool isCritical = false;    // on TimeLine::critical
    bool isFailed = false;
};

// A request from its first hand-out to its last end.
struct TimeLine {
    std::vector<Step> steps; // by start, then by name
    Milliseconds makespan = 0;
    std::vector<std::size_t> critical;       // steps, each held up by the one before; the last ends last
    std::vector<std::string> neverHandedOut; // ascending
    std::size_t mostAtATime = 0;
};

// Collects the steps of one run; see simulation.h.
class TimeLineBuilder {
public:
    explicit TimeLineBuilder(const GraphView& waits);

    // The next step in the order of their starts; `before` is the step that had its job before, or kNone.
    std::size_t Add(Vertex vertex, Milliseconds ready, Milliseconds start, Milliseconds end,
                    std::size_t before);
    void Fail(Vertex vertex) { line_.steps[stepOf_[vertex]].isFailed = true; }
    void CountAtATime(std::size_t count);
    Vertex VertexOf(std::size_t step) const { return vertexOf_[step]; }

    TimeLine Finish();

private:
    void SetHeldBy(std::size_t step);
    void SetSlack();
    void SetCritical();
    void SortSteps();

    const GraphView& waits_;
    TimeLine line_;
    std::vector<std::size_t> stepOf_; // of each vertex, or kNone
    std::vector<Vertex> vertexOf_;    // of each step
    std::vector<std::size_t> before_; // of each step
};

} // namespace tool

#endif
