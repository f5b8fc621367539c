#include "tool/graph/graph_layers.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tool {

namespace {

constexpr std::size_t kMostBends = 20000;
constexpr std::size_t kSweeps = 12;
constexpr std::size_t kSlotsForAllSweeps = 4000;

// Behind everything that it waits for. On a cycle the names decide.
std::vector<std::size_t> LayerOf(const Successors& waits, const Successors& waiters)
{
    const Components components = FindComponents(waits);
    std::vector<std::size_t> layers(waits.size());
    for (const std::vector<Vertex>& members : components.members) {
        for (const Vertex node : members) {
            const auto putBehind = [&](Vertex other) {
                if (components.of[other] != components.of[node] || other < node) {
                    layers[node] = std::max(layers[node], layers[other] + 1);
                }
            };
            std::for_each(waits[node].begin(), waits[node].end(), putBehind);
            for (const Vertex other : waiters[node]) {
                if (components.of[other] == components.of[node]) {
                    putBehind(other);
                }
            }
        }
    }
    return layers;
}

void Connect(std::vector<Slot>& slots, Vertex before, Vertex behind)
{
    slots[before].behind.push_back(behind);
    slots[behind].before.push_back(before);
}

std::size_t CountBends(const GraphPicture& picture, const GraphLayers& layers)
{
    std::size_t count = 0;
    for (const GraphEdge& edge : picture.edges) {
        const std::size_t a = layers.slots[edge.from].layer;
        const std::size_t b = layers.slots[edge.to].layer;
        count += std::max(a, b) - std::min(a, b) - (a == b ? 0U : 1U);
    }
    return count;
}

void AddEdges(const GraphPicture& picture, GraphLayers& layers)
{
    const bool hasBends = CountBends(picture, layers) <= kMostBends;
    for (std::size_t i = 0; i < picture.edges.size(); ++i) {
        Vertex front = picture.edges[i].to;
        Vertex back = picture.edges[i].from;
        layers.isTurned.push_back(layers.slots[front].layer > layers.slots[back].layer);
        if (layers.isTurned.back()) {
            std::swap(front, back);
        }
        std::vector<Vertex>& bends = layers.bends.emplace_back();
        const std::size_t end = layers.slots[back].layer;
        for (std::size_t at = layers.slots[front].layer + 1; hasBends && at < end; ++at) {
            const auto bend = static_cast<Vertex>(layers.slots.size());
            layers.slots.push_back({at, static_cast<Vertex>(i), true, {}, {}});
            Connect(layers.slots, bends.empty() ? front : bends.back(), bend);
            bends.push_back(bend);
        }
        if (front != back && (hasBends || layers.slots[front].layer + 1 == end)) {
            Connect(layers.slots, bends.empty() ? front : bends.back(), back);
        }
        if (!layers.isTurned.back()) {
            std::reverse(bends.begin(), bends.end());
        }
    }
}

// How often the edges between two neighbouring layers cross: the pairs that are in another order at the
// back, counted by a tree of partial sums.
std::size_t CountCrossings(const GraphLayers& layers, std::size_t layer, const std::vector<Vertex>& rank)
{
    std::vector<std::size_t> sums(layers.layers[layer + 1].size() + 1);
    std::size_t crossings = 0;
    std::size_t seen = 0;
    for (const Vertex slot : layers.layers[layer]) {
        std::vector<Vertex> ends;
        for (const Vertex other : layers.slots[slot].behind) {
            ends.push_back(rank[other]);
        }
        for (const Vertex end : ends) {
            std::size_t below = 0;
            for (std::size_t at = end + 1; at > 0; at -= at & (~at + 1)) {
                below += sums[at];
            }
            crossings += seen - below;
        }
        for (const Vertex end : ends) {
            for (std::size_t at = end + 1; at < sums.size(); at += at & (~at + 1)) {
                ++sums[at];
            }
        }
        seen += ends.size();
    }
    return crossings;
}

// Moves each slot to the middle of its neighbours in the next layer, forwards and back in turn.
class Ordering {
public:
    explicit Ordering(GraphLayers& layers) : layers_(layers), rank_(layers.slots.size())
    {
        std::for_each(layers.layers.begin(), layers.layers.end(),
                      [this](const std::vector<Vertex>& layer) { Rank(layer); });
    }

    void Improve()
    {
        const bool isLarge = layers_.slots.size() > kSlotsForAllSweeps;
        std::vector<std::vector<Vertex>> best = layers_.layers;
        std::size_t fewest = Crossings();
        for (std::size_t sweep = 0; sweep < (isLarge ? kSweeps / 3 : kSweeps) && fewest > 0; ++sweep) {
            Sweep(sweep % 2 == 0);
            const std::size_t crossings = Crossings();
            if (crossings < fewest) {
                fewest = crossings;
                best = layers_.layers;
            }
        }
        layers_.layers = std::move(best);
    }

private:
    void Rank(const std::vector<Vertex>& layer)
    {
        for (std::size_t i = 0; i < layer.size(); ++i) {
            rank_[layer[i]] = static_cast<Vertex>(i);
        }
    }

    std::size_t Crossings() const
    {
        std::size_t crossings = 0;
        for (std::size_t layer = 0; layer + 1 < layers_.layers.size(); ++layer) {
            crossings += CountCrossings(layers_, layer, rank_);
        }
        return crossings;
    }

    double Middle(Vertex slot, bool isForwards) const
    {
        const Slot& one = layers_.slots[slot];
        const std::vector<Vertex>& others = isForwards ? one.before : one.behind;
        if (others.empty()) {
            return rank_[slot];
        }
        const double sum = std::accumulate(others.begin(), others.end(), 0.0,
                                           [this](double so, Vertex other) { return so + rank_[other]; });
        return sum / static_cast<double>(others.size());
    }

    void Sweep(bool isForwards)
    {
        const std::size_t count = layers_.layers.size();
        for (std::size_t i = 0; i < count; ++i) {
            std::vector<Vertex>& layer = layers_.layers[isForwards ? i : count - 1 - i];
            std::vector<std::pair<double, Vertex>> order;
            order.reserve(layer.size());
            for (const Vertex slot : layer) {
                order.emplace_back(Middle(slot, isForwards), slot);
            }
            std::stable_sort(order.begin(), order.end(),
                             [](const auto& a, const auto& b) { return a.first < b.first; });
            std::transform(order.begin(), order.end(), layer.begin(),
                           [](const auto& one) { return one.second; });
            Rank(layer);
        }
    }

    GraphLayers& layers_;
    std::vector<Vertex> rank_; // of each slot, in its layer
};

} // namespace

GraphLayers MakeLayers(const GraphPicture& picture)
{
    GraphLayers layers;
    const std::vector<std::size_t> layerOf = LayerOf(WaitsFor(picture), WaitedForBy(picture));
    for (Vertex node = 0; node < picture.nodes.size(); ++node) {
        layers.slots.push_back({layerOf[node], node, false, {}, {}});
    }
    AddEdges(picture, layers);
    for (Vertex slot = 0; slot < layers.slots.size(); ++slot) {
        const std::size_t layer = layers.slots[slot].layer;
        layers.layers.resize(std::max(layers.layers.size(), layer + 1));
        layers.layers[layer].push_back(slot);
    }
    Ordering(layers).Improve();
    return layers;
}

} // namespace tool
