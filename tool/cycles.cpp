#include "tool/cycles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <unordered_map>

namespace tool {

namespace {

using Number = std::uint32_t;
constexpr Number kNoNumber = std::numeric_limits<Number>::max();

// For the search of a shortest cycle, in each component: else a ring would take the square of its length.
constexpr std::size_t kMostSteps = 2'000'000;

// The same graph with numbers for names; a smaller name has a smaller number.
struct Graph {
    std::vector<const std::string*> names;
    std::vector<std::vector<Number>> waits;
};

Graph Numbered(const Waits& waits)
{
    Graph graph;
    std::unordered_map<std::string_view, Number> numbers;
    for (const auto& [name, others] : waits) {
        numbers.emplace(name, static_cast<Number>(graph.names.size()));
        graph.names.push_back(&name);
    }
    graph.waits.resize(graph.names.size());
    for (const auto& [name, others] : waits) {
        std::vector<Number>& row = graph.waits[numbers.at(name)];
        for (const std::string& other : others) {
            const auto found = numbers.find(other);
            if (found != numbers.end()) {
                row.push_back(found->second);
            }
        }
    }
    return graph;
}

// Tarjan's method with its own stack, since the depth belongs to whoever wrote the files.
class Components {
public:
    explicit Components(const Graph& graph)
        : graph_(graph), index_(graph.names.size(), kNoNumber), low_(graph.names.size()),
          isOnStack_(graph.names.size())
    {
        for (Number start = 0; start < graph.names.size(); ++start) {
            if (index_[start] == kNoNumber) {
                VisitFrom(start);
            }
        }
    }

    std::vector<std::vector<Number>> found;

private:
    struct Frame {
        Number vertex;
        std::size_t next;
    };

    void Enter(Number vertex)
    {
        index_[vertex] = low_[vertex] = count_++;
        stack_.push_back(vertex);
        isOnStack_[vertex] = true;
        frames_.push_back({vertex, 0});
    }

    void VisitFrom(Number start)
    {
        Enter(start);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            const Number vertex = frame.vertex;
            if (frame.next < graph_.waits[vertex].size()) {
                const Number other = graph_.waits[vertex][frame.next++];
                if (index_[other] == kNoNumber) {
                    Enter(other);
                } else if (isOnStack_[other]) {
                    low_[vertex] = std::min(low_[vertex], index_[other]);
                }
                continue;
            }
            frames_.pop_back();
            if (!frames_.empty()) {
                Number& low = low_[frames_.back().vertex];
                low = std::min(low, low_[vertex]);
            }
            if (low_[vertex] == index_[vertex]) {
                Leave(vertex);
            }
        }
    }

    void Leave(Number root)
    {
        std::vector<Number> members;
        do {
            members.push_back(stack_.back());
            isOnStack_[stack_.back()] = false;
            stack_.pop_back();
        } while (members.back() != root);
        std::sort(members.begin(), members.end());
        const std::vector<Number>& waits = graph_.waits[root];
        if (members.size() > 1 || std::find(waits.begin(), waits.end(), root) != waits.end()) {
            found.push_back(std::move(members));
        }
    }

    const Graph& graph_;
    std::vector<Number> index_;
    std::vector<Number> low_;
    std::vector<bool> isOnStack_;
    std::vector<Number> stack_;
    std::vector<Frame> frames_;
    Number count_ = 0;
};

// Breadth first from one member; gives up where it would become as long as the best one so far.
class ShortestCycle {
public:
    explicit ShortestCycle(const Graph& graph)
        : graph_(graph), from_(graph.names.size()), seen_(graph.names.size())
    {}

    std::vector<Number> Find(const std::vector<Number>& members)
    {
        best_.clear();
        steps_ = 0;
        for (const Number start : members) {
            SearchFrom(start);
            if (steps_ > kMostSteps) {
                break;
            }
        }
        return best_;
    }

private:
    // Another component has no way back, so straying into one costs time but never gives a cycle.
    void SearchFrom(Number start)
    {
        ++round_;
        std::vector<Number> level = {start};
        for (std::size_t length = 1; !level.empty() && (best_.empty() || length < best_.size()); ++length) {
            std::vector<Number> next;
            for (const Number vertex : level) {
                steps_ += graph_.waits[vertex].size();
                for (const Number other : graph_.waits[vertex]) {
                    if (other == start) {
                        Keep(start, vertex);
                        return;
                    }
                    if (seen_[other] != round_) {
                        seen_[other] = round_;
                        from_[other] = vertex;
                        next.push_back(other);
                    }
                }
            }
            level.swap(next);
        }
    }

    void Keep(Number start, Number last)
    {
        best_.clear();
        for (Number at = last; at != start; at = from_[at]) {
            best_.push_back(at);
        }
        best_.push_back(start);
        std::reverse(best_.begin(), best_.end());
        std::rotate(best_.begin(), std::min_element(best_.begin(), best_.end()), best_.end());
    }

    const Graph& graph_;
    std::vector<Number> from_;
    std::vector<Number> seen_;
    std::vector<Number> best_;
    Number round_ = 0;
    std::size_t steps_ = 0;
};

} // namespace

std::vector<Cycle> FindCycles(const Waits& waits)
{
    const Graph graph = Numbered(waits);
    Components components(graph);
    std::sort(components.found.begin(), components.found.end());
    ShortestCycle shortest(graph);
    std::vector<Cycle> cycles;
    for (const std::vector<Number>& members : components.found) {
        Cycle cycle;
        for (const Number member : members) {
            cycle.members.push_back(*graph.names[member]);
        }
        for (const Number member : shortest.Find(members)) {
            cycle.shortest.push_back(*graph.names[member]);
        }
        cycles.push_back(std::move(cycle));
    }
    return cycles;
}

std::vector<std::string> BlockedBy(const Waits& waits, const std::vector<Cycle>& cycles)
{
    std::map<std::string, std::vector<const std::string*>> waiters;
    for (const auto& [name, others] : waits) {
        for (const std::string& other : others) {
            waiters[other].push_back(&name);
        }
    }
    std::set<std::string> onCycles;
    for (const Cycle& cycle : cycles) {
        onCycles.insert(cycle.members.begin(), cycle.members.end());
    }
    std::set<std::string> reached = onCycles;
    std::vector<std::string> pending(onCycles.begin(), onCycles.end());
    std::vector<std::string> blocked;
    while (!pending.empty()) {
        const std::string name = std::move(pending.back());
        pending.pop_back();
        for (const std::string* waiter : waiters[name]) {
            if (reached.insert(*waiter).second) {
                pending.push_back(*waiter);
                blocked.push_back(*waiter);
            }
        }
    }
    std::sort(blocked.begin(), blocked.end());
    return blocked;
}

} // namespace tool
