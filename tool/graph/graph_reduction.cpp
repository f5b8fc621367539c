#include "tool/graph/graph_reduction.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

namespace tool {

namespace {

// So many components are looked for at a time: memory stays in proportion to the nodes.
constexpr std::size_t kBlockWords = 64;
constexpr std::size_t kBlockBits = kBlockWords * 64;
using Bits = std::array<std::uint64_t, kBlockWords>;

bool Has(const Bits& bits, std::size_t at)
{
    return (bits[at / 64] >> (at % 64) & 1U) != 0;
}

// Edges from component to component, each once.
Successors Condense(const GraphPicture& picture, const Components& components)
{
    Successors next(components.members.size());
    for (const GraphEdge& edge : picture.edges) {
        if (components.of[edge.from] != components.of[edge.to]) {
            next[components.of[edge.from]].push_back(components.of[edge.to]);
        }
    }
    for (std::vector<Vertex>& row : next) {
        std::sort(row.begin(), row.end());
        row.erase(std::unique(row.begin(), row.end()), row.end());
    }
    return next;
}

// Of each component those direct successors that a longer way leads to as well. No edge leads to a later
// component, so one pass from the first to the last knows all that is reached.
Successors LongerWays(const Successors& next)
{
    Successors found(next.size());
    std::vector<Bits> reached(next.size());
    for (std::size_t begin = 0; begin < next.size(); begin += kBlockBits) {
        for (std::size_t from = begin; from < next.size(); ++from) {
            Bits& bits = reached[from];
            bits.fill(0);
            for (const Vertex to : next[from]) {
                if (to >= begin) { // what comes before the block reaches nothing in it
                    std::transform(bits.begin(), bits.end(), reached[to].begin(), bits.begin(),
                                   [](std::uint64_t a, std::uint64_t b) { return a | b; });
                }
            }
            for (const Vertex to : next[from]) {
                if (to < begin || to >= begin + kBlockBits) {
                    continue;
                }
                if (Has(bits, to - begin)) {
                    found[from].push_back(to);
                }
                bits[(to - begin) / 64] |= std::uint64_t{1} << ((to - begin) % 64);
            }
        }
    }
    return found;
}

} // namespace

std::size_t Reduce(GraphPicture& picture)
{
    const Components components = FindComponents(WaitsFor(picture));
    const Successors longer = LongerWays(Condense(picture, components));
    const std::size_t before = picture.edges.size();
    picture.edges.erase(std::remove_if(picture.edges.begin(), picture.edges.end(),
                                       [&](const GraphEdge& edge) {
                                           const std::vector<Vertex>& row = longer[components.of[edge.from]];
                                           return std::binary_search(row.begin(), row.end(),
                                                                     components.of[edge.to]);
                                       }),
                        picture.edges.end());
    const std::size_t count = before - picture.edges.size();
    picture.legend.push_back(
        fmt::format("reduced: {} left out, since a longer way leads to the same application",
                    count == 1 ? std::string("1 arrow") : fmt::format("{} arrows", count)));
    return count;
}

} // namespace tool
