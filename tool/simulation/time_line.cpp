#include "tool/simulation/time_line.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace tool {

TimeLineBuilder::TimeLineBuilder(const GraphView& waits) : waits_(waits), stepOf_(waits.Size(), kNone) {}

std::size_t TimeLineBuilder::Add(Vertex vertex, Milliseconds ready, Milliseconds start, Milliseconds end,
                                 std::size_t before)
{
    const std::size_t number = line_.steps.size();
    Step step;
    step.name = waits_.names[vertex];
    step.ready = ready;
    step.start = start;
    step.end = end;
    line_.steps.push_back(std::move(step));
    line_.makespan = std::max(line_.makespan, end);
    stepOf_[vertex] = number;
    vertexOf_.push_back(vertex);
    before_.push_back(before);
    return number;
}

void TimeLineBuilder::CountAtATime(std::size_t count)
{
    line_.mostAtATime = std::max(line_.mostAtATime, count);
}

TimeLine TimeLineBuilder::Finish()
{
    for (std::size_t step = 0; step < line_.steps.size(); ++step) {
        SetHeldBy(step);
    }
    SetSlack();
    SetCritical();
    for (Vertex vertex = 0; vertex < waits_.Size(); ++vertex) {
        if (stepOf_[vertex] == kNone && waits_.isKnown[vertex]) {
            line_.neverHandedOut.push_back(waits_.names[vertex]);
        }
    }
    SortSteps();
    return std::move(line_);
}

void TimeLineBuilder::SetHeldBy(std::size_t number)
{
    Step& step = line_.steps[number];
    if (step.start > step.ready) {
        step.heldBy = before_[number];
        step.isHeldByJob = true;
        return;
    }
    for (const Vertex needed : waits_.needs[vertexOf_[number]]) {
        const std::size_t other = stepOf_[needed];
        if (other != kNone && line_.steps[other].end == step.ready) {
            step.heldBy = other;
            return;
        }
    }
}

// Backwards from the end of all: everyone must be done before the latest start of those behind.
void TimeLineBuilder::SetSlack()
{
    std::vector<Milliseconds> latest(line_.steps.size(), line_.makespan);
    for (std::size_t number = line_.steps.size(); number-- > 0;) {
        Step& step = line_.steps[number];
        for (const Vertex waiting : waits_.neededBy[vertexOf_[number]]) {
            const std::size_t other = stepOf_[waiting];
            if (other != kNone) {
                const Milliseconds duration = line_.steps[other].end - line_.steps[other].start;
                latest[number] = std::min(latest[number], latest[other] - duration);
            }
        }
        if (before_[number] != kNone) {
            Milliseconds& before = latest[before_[number]];
            before = std::min(before, latest[number] - (step.end - step.start));
        }
        step.slack = latest[number] - step.end;
    }
}

void TimeLineBuilder::SetCritical()
{
    std::size_t last = kNone;
    for (std::size_t number = 0; number < line_.steps.size(); ++number) {
        const Step& step = line_.steps[number];
        if (step.end == line_.makespan && (last == kNone || step.name < line_.steps[last].name)) {
            last = number;
        }
    }
    for (; last != kNone; last = line_.steps[last].heldBy) {
        line_.steps[last].isCritical = true;
        line_.critical.push_back(last);
    }
    std::reverse(line_.critical.begin(), line_.critical.end());
}

void TimeLineBuilder::SortSteps()
{
    std::vector<std::size_t> order(line_.steps.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return std::tie(line_.steps[a].start, line_.steps[a].name) <
               std::tie(line_.steps[b].start, line_.steps[b].name);
    });
    std::vector<std::size_t> placeOf(order.size());
    std::vector<Step> sorted;
    for (std::size_t place = 0; place < order.size(); ++place) {
        placeOf[order[place]] = place;
        sorted.push_back(std::move(line_.steps[order[place]]));
    }
    for (Step& step : sorted) {
        step.heldBy = step.heldBy == kNone ? kNone : placeOf[step.heldBy];
    }
    for (std::size_t& number : line_.critical) {
        number = placeOf[number];
    }
    line_.steps = std::move(sorted);
}

} // namespace tool
