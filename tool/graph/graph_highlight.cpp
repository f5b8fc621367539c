#include "tool/graph/graph_highlight.h"

#include <algorithm>
#include <limits>
#include <utility>

#include <fmt/format.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr Vertex kEnd = std::numeric_limits<Vertex>::max();

// How long the chains below each node are, and which node comes next on the longest one.
struct Chains {
    std::vector<std::size_t> lengths;
    std::vector<Vertex> next;
};

// A component behind the given one is done before it. Within a cycle nothing is counted.
Chains LongestChains(const Successors& successors, const Components& components)
{
    Chains chains{std::vector<std::size_t>(successors.size()), std::vector<Vertex>(successors.size(), kEnd)};
    for (const std::vector<Vertex>& members : components.members) {
        for (const Vertex node : members) {
            for (const Vertex other : successors[node]) {
                if (components.of[other] == components.of[node]) {
                    continue;
                }
                const std::size_t length = chains.lengths[other] + 1;
                if (length > chains.lengths[node]) {
                    chains.lengths[node] = length;
                    chains.next[node] = other;
                }
            }
        }
    }
    return chains;
}

} // namespace

std::size_t HighlightCycles(GraphPicture& picture)
{
    const Successors successors = WaitsFor(picture);
    const Components components = FindComponents(successors);
    std::vector<bool> isCyclic(components.members.size());
    std::size_t count = 0;
    for (Vertex component = 0; component < components.members.size(); ++component) {
        isCyclic[component] = components.IsCyclic(component, successors);
        for (const Vertex node : components.members[component]) {
            picture.nodes[node].isHighlighted = isCyclic[component];
            count += isCyclic[component] ? 1U : 0U;
        }
    }
    for (GraphEdge& edge : picture.edges) {
        const Vertex component = components.of[edge.from];
        edge.isHighlighted = component == components.of[edge.to] && isCyclic[component];
    }
    picture.legend.push_back(count == 0 ? std::string("highlighted: nothing, there is no cycle")
                                        : fmt::format("highlighted: {} on cycles", count));
    return count;
}

std::size_t HighlightLongestChain(GraphPicture& picture)
{
    const Successors successors = WaitsFor(picture);
    const Chains chains = LongestChains(successors, FindComponents(successors));
    const auto longest = std::max_element(chains.lengths.begin(), chains.lengths.end());
    if (longest == chains.lengths.end() || *longest == 0) {
        picture.legend.emplace_back("highlighted: nothing, no application waits for another one");
        return 0;
    }
    std::vector<Vertex> onto(picture.nodes.size(), kEnd);
    std::size_t count = 0;
    for (auto at = static_cast<Vertex>(longest - chains.lengths.begin()); at != kEnd; at = chains.next[at]) {
        picture.nodes[at].isHighlighted = true;
        onto[at] = chains.next[at];
        ++count;
    }
    for (GraphEdge& edge : picture.edges) {
        edge.isHighlighted = onto[edge.from] == edge.to;
    }
    picture.legend.push_back(
        fmt::format("highlighted: a longest chain, {} applications one after the other", count));
    return count;
}

void HighlightNode(GraphPicture& picture, std::size_t node)
{
    picture.nodes[node].isHighlighted = true;
    for (GraphEdge& edge : picture.edges) {
        edge.isHighlighted = edge.from == node || edge.to == node;
    }
    picture.legend.push_back(
        fmt::format("highlighted: {} and its arrows", Printable(picture.nodes[node].name)));
}

} // namespace tool
