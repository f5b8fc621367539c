#include "tool/graph/graph_layout.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "tool/graph/graph_layers.h"

namespace tool {

namespace {

constexpr double kNodeHeight = 26;
constexpr double kPadding = 10;     // between a label and its frame
constexpr double kNodeGap = 12;     // below a node
constexpr double kBendGap = 8;      // below a bend
constexpr double kColumnGap = 70;   // room for the edges
constexpr std::size_t kPasses = 16; // more change nothing that can be seen

// Gives every slot the height at which it is nearest to its neighbours, with the order of its layer kept.
class Heights {
public:
    explicit Heights(const GraphLayers& layers) : layers_(layers), middle_(layers.slots.size())
    {
        for (const std::vector<Vertex>& layer : layers.layers) {
            Stack(layer);
        }
        for (std::size_t pass = 0; pass < kPasses; ++pass) {
            const std::size_t count = layers.layers.size();
            for (std::size_t i = 0; i < count; ++i) {
                Fit(layers.layers[pass % 2 == 0 ? i : count - 1 - i], pass % 2 == 0);
            }
        }
    }

    std::vector<double> Take() { return std::move(middle_); }

private:
    double Room(Vertex slot) const { return layers_.slots[slot].isBend ? kBendGap : kNodeHeight + kNodeGap; }

    void Stack(const std::vector<Vertex>& layer)
    {
        const double total = std::accumulate(layer.begin(), layer.end(), 0.0,
                                             [this](double sum, Vertex slot) { return sum + Room(slot); });
        double at = -total / 2;
        for (const Vertex slot : layer) {
            middle_[slot] = at + Room(slot) / 2;
            at += Room(slot);
        }
    }

    double Wanted(Vertex slot, bool isForwards) const
    {
        const Slot& one = layers_.slots[slot];
        const std::vector<Vertex>& others = isForwards ? one.before : one.behind;
        if (others.empty()) {
            return middle_[slot];
        }
        const double sum = std::accumulate(others.begin(), others.end(), 0.0,
                                           [this](double so, Vertex other) { return so + middle_[other]; });
        return sum / static_cast<double>(others.size());
    }

    // The least sum of squares from the wanted heights: slots that would overlap become one block, which
    // goes to the mean of what its slots want.
    void Fit(const std::vector<Vertex>& layer, bool isForwards)
    {
        struct Block {
            double sum;
            double count;
            std::size_t end;
        };
        std::vector<double> offsets;
        std::vector<Block> blocks;
        double offset = 0;
        for (std::size_t i = 0; i < layer.size(); ++i) {
            offset += i == 0 ? 0 : (Room(layer[i - 1]) + Room(layer[i])) / 2;
            offsets.push_back(offset);
            blocks.push_back({Wanted(layer[i], isForwards) - offset, 1, i + 1});
            while (blocks.size() > 1) {
                const Block& last = blocks.back();
                Block& before = blocks[blocks.size() - 2];
                if (before.sum / before.count <= last.sum / last.count) {
                    break;
                }
                before = {before.sum + last.sum, before.count + last.count, last.end};
                blocks.pop_back();
            }
        }
        std::size_t i = 0;
        for (const Block& block : blocks) {
            for (; i < block.end; ++i) {
                middle_[layer[i]] = block.sum / block.count + offsets[i];
            }
        }
    }

    const GraphLayers& layers_;
    std::vector<double> middle_;
};

std::vector<Box> Columns(const GraphLayers& layers, const std::vector<double>& labelWidths)
{
    std::vector<Box> columns;
    double x = kPadding;
    for (const std::vector<Vertex>& layer : layers.layers) {
        double width = 0;
        for (const Vertex slot : layer) {
            const bool isBend = layers.slots[slot].isBend;
            width = std::max(width, isBend ? 0 : labelWidths[slot] + 2 * kPadding);
        }
        columns.push_back({{x, 0}, width, 0});
        x += width + kColumnGap;
    }
    return columns;
}

// An edge keeps its height right across the columns that it passes.
void AddEdge(const GraphPicture& picture, const GraphLayers& layers, const std::vector<Box>& columns,
             const std::vector<double>& middles, std::size_t number, GraphLayout& layout)
{
    const Box& from = layout.nodes[picture.edges[number].from];
    const Box& to = layout.nodes[picture.edges[number].to];
    const bool isTurned = layers.isTurned[number];
    const auto end = [](const Box& box, bool isRight) {
        return Point{box.corner.x + (isRight ? box.width : 0), box.corner.y + box.height / 2};
    };
    std::vector<Point> way = {end(from, isTurned)};
    for (const Vertex bend : layers.bends[number]) {
        const Box& column = columns[layers.slots[bend].layer];
        const double right = column.corner.x + column.width;
        way.push_back({isTurned ? column.corner.x : right, middles[bend]});
        way.push_back({isTurned ? right : column.corner.x, middles[bend]});
    }
    way.push_back(end(to, !isTurned));
    layout.edges.push_back(std::move(way));
}

} // namespace

GraphLayout LayOut(const GraphPicture& picture, const std::vector<double>& labelWidths)
{
    const GraphLayers layers = MakeLayers(picture);
    const std::vector<Box> columns = Columns(layers, labelWidths);
    std::vector<double> middles = Heights(layers).Take();
    GraphLayout layout;
    if (picture.nodes.empty()) {
        return layout;
    }
    const auto [lowest, highest] = std::minmax_element(middles.begin(), middles.end());
    const double top = *lowest - kNodeHeight / 2 - kPadding;
    layout.height = *highest - *lowest + kNodeHeight + 2 * kPadding;
    layout.width = columns.back().corner.x + columns.back().width + kPadding;
    for (double& middle : middles) {
        middle -= top;
    }
    for (std::size_t node = 0; node < picture.nodes.size(); ++node) {
        const Box& column = columns[layers.slots[node].layer];
        layout.nodes.push_back(
            {{column.corner.x, middles[node] - kNodeHeight / 2}, column.width, kNodeHeight});
    }
    for (std::size_t edge = 0; edge < picture.edges.size(); ++edge) {
        AddEdge(picture, layers, columns, middles, edge, layout);
    }
    return layout;
}

} // namespace tool
