#include "tool/plan/cycles.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "tool/plan/components.h"

namespace tool {

namespace {

// For the search of a shortest cycle, in each component: else a ring would take the square of its length.
constexpr std::size_t kMostSteps = 2'000'000;

// The same graph with numbers for names; a smaller name has a smaller number.
struct Graph {
    std::vector<const std::string*> names;
    Successors waits;
};

Graph Numbered(const Waits& waits)
{
    Graph graph;
    std::unordered_map<std::string_view, Vertex> numbers;
    for (const auto& [name, others] : waits) {
        numbers.emplace(name, static_cast<Vertex>(graph.names.size()));
        graph.names.push_back(&name);
    }
    graph.waits.resize(graph.names.size());
    for (const auto& [name, others] : waits) {
        std::vector<Vertex>& row = graph.waits[numbers.at(name)];
        for (const std::string& other : others) {
            const auto found = numbers.find(other);
            if (found != numbers.end()) {
                row.push_back(found->second);
            }
        }
    }
    return graph;
}

// Breadth first from one member; gives up where it would become as long as the best one so far.
class ShortestCycle {
public:
    explicit ShortestCycle(const Graph& graph)
        : graph_(graph), from_(graph.names.size()), seen_(graph.names.size())
    {}

    std::vector<Vertex> Find(const std::vector<Vertex>& members)
    {
        best_.clear();
        steps_ = 0;
        for (const Vertex start : members) {
            SearchFrom(start);
            if (steps_ > kMostSteps) {
                break;
            }
        }
        return best_;
    }

private:
    // Another component has no way back, so straying into one costs time but never gives a cycle.
    void SearchFrom(Vertex start)
    {
        ++round_;
        std::vector<Vertex> level = {start};
        for (std::size_t length = 1; !level.empty() && (best_.empty() || length < best_.size()); ++length) {
            std::vector<Vertex> next;
            for (const Vertex vertex : level) {
                steps_ += graph_.waits[vertex].size();
                for (const Vertex other : graph_.waits[vertex]) {
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

    void Keep(Vertex start, Vertex last)
    {
        best_.clear();
        for (Vertex at = last; at != start; at = from_[at]) {
            best_.push_back(at);
        }
        best_.push_back(start);
        std::reverse(best_.begin(), best_.end());
        std::rotate(best_.begin(), std::min_element(best_.begin(), best_.end()), best_.end());
    }

    const Graph& graph_;
    std::vector<Vertex> from_;
    std::vector<Vertex> seen_;
    std::vector<Vertex> best_;
    Vertex round_ = 0;
    std::size_t steps_ = 0;
};

} // namespace

std::vector<Cycle> FindCycles(const Waits& waits)
{
    const Graph graph = Numbered(waits);
    const Components components = FindComponents(graph.waits);
    std::vector<std::vector<Vertex>> cyclic;
    for (Vertex component = 0; component < components.members.size(); ++component) {
        if (components.IsCyclic(component, graph.waits)) {
            cyclic.push_back(components.members[component]);
        }
    }
    std::sort(cyclic.begin(), cyclic.end());
    ShortestCycle shortest(graph);
    std::vector<Cycle> cycles;
    for (const std::vector<Vertex>& members : cyclic) {
        Cycle cycle;
        for (const Vertex member : members) {
            cycle.members.push_back(*graph.names[member]);
        }
        for (const Vertex member : shortest.Find(members)) {
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
