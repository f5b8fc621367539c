#include "tool/simulation/simulation.h"

#include <algorithm>
#include <queue>
#include <stdexcept>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "startplan/result_codes.h"
#include "tool/library/log_collector.h"
#include "tool/library/table_lookup.h"
#include "tool/simulation/time_line.h"

namespace tool {

namespace {

constexpr Milliseconds kStartTime = 100;
constexpr Milliseconds kStopTime = 60'000; // what a record without term_time_out says

// The clock, the jobs, and the process manager's loop around the graph.
//
// Asking the graph for what is ready costs a walk over all its vertices. But counting foresees what it will
// say, so it is asked only before one of the foreseen is done: that one must have been handed out before it
// can be popped, and whatever else has become ready by then comes with the same answer. The answer is held
// against what was foreseen. Where somebody waits for a name that is no vertex, nothing can be foreseen, and
// the graph is asked after the pops of each moment, as on the device.
class Run {
public:
    Run(DependGraph& graph, const GraphView& waits, const SimulationSettings& settings)
        : graph_(graph), waits_(waits), settings_(settings), line_(waits),
          canForesee_(std::find(waits.isKnown.begin(), waits.isKnown.end(), false) == waits.isKnown.end()),
          open_(waits.Size()), readyAt_(waits.Size()), isHandedOut_(waits.Size())
    {
        for (std::size_t job = 0; job < std::min(settings.jobs, waits.Size()); ++job) {
            freeJobs_.emplace(0, job, kNone);
        }
    }

    TimeLine Go()
    {
        const LogCollector unheard;
        std::vector<Vertex> ready;
        for (Vertex vertex = 0; vertex < waits_.Size(); ++vertex) {
            open_[vertex] = waits_.needs[vertex].size();
            if (open_[vertex] == 0) {
                ready.push_back(vertex);
            }
        }
        Queue(canForesee_ ? ready : Ask());
        while (!running_.empty()) {
            now_ = running_.top().end;
            Queue(EndSteps());
        }
        if (canForesee_) {
            CheckForesight();
        }
        return line_.Finish();
    }

private:
    struct Running {
        Milliseconds end = 0;
        std::size_t step = 0;
        std::size_t job = 0;
        bool operator>(const Running& other) const
        {
            return std::tie(end, step) > std::tie(other.end, other.step);
        }
    };

    std::vector<Vertex> Ask()
    {
        std::vector<Vertex> answer;
        if (graph_.IsEmpty()) {
            return answer; // where the process manager asks no more
        }
        for (const std::string& name : graph_.GetNoDependVertices()) {
            answer.push_back(static_cast<Vertex>(waits_.Find(name)));
            isHandedOut_.at(answer.back()) = true;
        }
        return answer;
    }

    void CheckForesight()
    {
        std::sort(foreseen_.begin(), foreseen_.end());
        if (Ask() != foreseen_) {
            throw std::logic_error("the graph hands out other applications than its edges tell");
        }
        foreseen_.clear();
    }

    // Starts what is ready, as far as there are jobs for it; first what was ready first.
    void Queue(const std::vector<Vertex>& ready)
    {
        for (const Vertex vertex : ready) {
            readyAt_[vertex] = now_;
            queue_.push(vertex);
        }
        if (canForesee_) {
            foreseen_.insert(foreseen_.end(), ready.begin(), ready.end());
        }
        while (!queue_.empty() && (settings_.jobs == 0 || !freeJobs_.empty())) {
            Start(queue_.front());
            queue_.pop();
        }
        line_.CountAtATime(running_.size());
    }

    void Start(Vertex vertex)
    {
        std::size_t job = 0;
        std::size_t before = kNone;
        if (settings_.jobs != 0) {
            std::tie(std::ignore, job, before) = *freeJobs_.begin();
            freeJobs_.erase(freeJobs_.begin());
        }
        const std::string& name = waits_.names[vertex];
        const Milliseconds end = now_ + settings_.duration(name);
        running_.push({end, line_.Add(vertex, readyAt_[vertex], now_, end, before), job});
    }

    // Ends all that is done now. What becomes ready by that, ascending.
    std::vector<Vertex> EndSteps()
    {
        std::vector<Vertex> ended;
        for (; !running_.empty() && running_.top().end == now_; running_.pop()) {
            const Running& one = running_.top();
            ended.push_back(line_.VertexOf(one.step));
            if (settings_.jobs != 0) {
                freeJobs_.emplace(now_, one.job, one.step);
            }
        }
        const auto isUnasked = [this](Vertex vertex) { return !isHandedOut_[vertex]; };
        if (std::any_of(ended.begin(), ended.end(), isUnasked)) {
            CheckForesight();
        }
        std::vector<Vertex> ready;
        for (const Vertex vertex : ended) {
            Pop(vertex, ready);
        }
        std::sort(ready.begin(), ready.end());
        return canForesee_ ? ready : Ask();
    }

    void Pop(Vertex vertex, std::vector<Vertex>& ready)
    {
        const std::string& name = waits_.names[vertex];
        if (settings_.failing.count(name) != 0) {
            line_.Fail(vertex);
            return;
        }
        if (!graph_.Pop(name)) {
            throw std::logic_error("the graph has not handed out what is popped");
        }
        for (const Vertex waiting : waits_.neededBy[vertex]) {
            if (--open_[waiting] == 0) {
                ready.push_back(waiting);
            }
        }
    }

    DependGraph& graph_;
    const GraphView& waits_;
    const SimulationSettings& settings_;
    TimeLineBuilder line_;
    bool canForesee_;
    Milliseconds now_ = 0;
    std::vector<std::size_t> open_; // of each vertex how many it still waits for
    std::vector<Milliseconds> readyAt_;
    std::vector<bool> isHandedOut_; // by the graph
    std::vector<Vertex> foreseen_;  // ready, but not asked for yet
    std::queue<Vertex> queue_;      // ready, and waiting for a job
    std::priority_queue<Running, std::vector<Running>, std::greater<>> running_;
    std::set<std::tuple<Milliseconds, std::size_t, std::size_t>>
        freeJobs_; // since when, which, its last step
};

} // namespace

TimeLine RunTimeLine(DependGraph& graph, const GraphView& waits, const SimulationSettings& settings)
{
    return Run(graph, waits, settings).Go();
}

TimeLine Simulate(const ParseAndDepend& library, RequestKind kind, const std::vector<std::string>& names,
                  const SimulationSettings& settings)
{
    const LogCollector unheard;
    DependGraph graph;
    std::vector<std::string> notFound;
    if (FillGraph(library, kind, names, graph, notFound) == PARSE_ERR_GRAPH_CYCLE) {
        return {};
    }
    return RunTimeLine(graph, ViewOf(RequestWaits(library, kind, names)), settings);
}

Durations DefaultDurations(const Configuration& configuration, RequestKind kind,
                           const std::vector<std::string>& names)
{
    if (kind == RequestKind::START) {
        return [](const std::string& /*name*/) { return kStartTime; };
    }
    std::unordered_map<std::string, Milliseconds> times;
    const auto entries = EntriesServing(configuration.library, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::size_t app = configuration.FindApp(names[i]);
        if (app == kNone && entries[i] != nullptr) {
            app = configuration.FindApp(entries[i]->first);
        }
        times[names[i]] = app == kNone ? kStopTime : configuration.apps[app].GetTermTimeOut();
    }
    return [times = std::move(times)](const std::string& name) {
        const auto found = times.find(name);
        return found == times.end() ? kStopTime : found->second;
    };
}

} // namespace tool
