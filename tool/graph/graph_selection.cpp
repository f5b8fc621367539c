#include "tool/graph/graph_selection.h"

#include <utility>

namespace tool {

namespace {

// Breadth first, one level after the other.
void Reach(const Successors& successors, const std::vector<std::size_t>& starts, std::size_t depth,
           std::vector<bool>& isReached)
{
    std::vector<bool> isSeen(successors.size());
    std::vector<std::size_t> level = starts;
    for (std::size_t steps = 0; !level.empty(); ++steps) {
        std::vector<std::size_t> next;
        for (const std::size_t node : level) {
            isReached[node] = isSeen[node] = true;
        }
        for (std::size_t i = 0; i < level.size() && steps < depth; ++i) {
            for (const Vertex other : successors[level[i]]) {
                if (!isSeen[other]) {
                    isSeen[other] = true;
                    next.push_back(other);
                }
            }
        }
        level = std::move(next);
    }
}

} // namespace

std::vector<bool> Reached(const GraphPicture& picture, const std::vector<std::size_t>& starts,
                          Direction direction, std::size_t depth)
{
    std::vector<bool> isReached(picture.nodes.size());
    if (direction != Direction::UP) {
        Reach(WaitsFor(picture), starts, depth, isReached);
    }
    if (direction != Direction::DOWN) {
        Reach(WaitedForBy(picture), starts, depth, isReached);
    }
    return isReached;
}

GraphPicture Cut(const GraphPicture& picture, const std::vector<bool>& isKept)
{
    GraphPicture cut;
    cut.legend = picture.legend;
    std::vector<Vertex> numbers(picture.nodes.size());
    for (std::size_t node = 0; node < picture.nodes.size(); ++node) {
        if (isKept[node]) {
            numbers[node] = static_cast<Vertex>(cut.nodes.size());
            cut.nodes.push_back(picture.nodes[node]);
        }
    }
    for (const GraphEdge& edge : picture.edges) {
        if (isKept[edge.from] && isKept[edge.to]) {
            cut.edges.push_back({numbers[edge.from], numbers[edge.to], edge.isHighlighted});
        }
    }
    return cut;
}

} // namespace tool
