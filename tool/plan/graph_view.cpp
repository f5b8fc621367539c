#include "tool/plan/graph_view.h"

#include <algorithm>
#include <unordered_map>

namespace tool {

namespace {

// The table and the waits of a request are both maps from a name to a set of names.
template <class Map>
std::vector<std::string> AllNamesOf(const Map& map)
{
    std::vector<std::string> names;
    for (const auto& [name, others] : map) {
        names.push_back(name);
        names.insert(names.end(), others.begin(), others.end());
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

template <class Map>
GraphView MakeView(const Map& map)
{
    GraphView view;
    view.names = AllNamesOf(map);
    view.isKnown.resize(view.Size());
    view.needs.resize(view.Size());
    view.neededBy.resize(view.Size());
    std::unordered_map<std::string_view, Vertex> numbers;
    for (const std::string& name : view.names) {
        numbers.emplace(name, static_cast<Vertex>(numbers.size()));
    }
    for (const auto& [name, others] : map) {
        const Vertex vertex = numbers.at(name);
        view.isKnown[vertex] = true;
        for (const std::string& other : others) {
            view.needs[vertex].push_back(numbers.at(other));
        }
    }
    for (Vertex vertex = 0; vertex < view.Size(); ++vertex) {
        for (const Vertex other : view.needs[vertex]) {
            view.neededBy[other].push_back(vertex);
        }
    }
    return view;
}

} // namespace

std::size_t GraphView::Find(std::string_view name) const
{
    const auto found = std::lower_bound(names.begin(), names.end(), name);
    return found == names.end() || *found != name ? kNone : static_cast<std::size_t>(found - names.begin());
}

std::size_t GraphView::EdgeCount() const
{
    std::size_t count = 0;
    for (const std::vector<Vertex>& row : needs) {
        count += row.size();
    }
    return count;
}

GraphView ViewOf(const ParseAndDepend::DependsMap& table)
{
    return MakeView(table);
}

GraphView ViewOf(const Waits& waits)
{
    return MakeView(waits);
}

std::vector<Vertex> Ways::To(Vertex vertex) const
{
    std::vector<Vertex> way;
    if (!Reaches(vertex)) {
        return way;
    }
    for (; previous[vertex] != vertex; vertex = previous[vertex]) {
        way.push_back(vertex);
    }
    way.push_back(vertex);
    std::reverse(way.begin(), way.end());
    return way;
}

// Each level is visited in the order in which the ways to it compare, so the first way found is the first
// by name, too.
Ways FindWays(const Successors& successors, Vertex start)
{
    Ways ways;
    ways.steps.assign(successors.size(), kFar);
    ways.previous.assign(successors.size(), start);
    ways.steps[start] = 0;
    std::vector<Vertex> queue = {start};
    for (std::size_t next = 0; next < queue.size(); ++next) {
        const Vertex vertex = queue[next];
        for (const Vertex other : successors[vertex]) {
            if (ways.steps[other] == kFar) {
                ways.steps[other] = ways.steps[vertex] + 1;
                ways.previous[other] = vertex;
                queue.push_back(other);
            }
        }
    }
    return ways;
}

} // namespace tool
