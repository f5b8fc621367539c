#include "tool/graph/graph_svg.h"

#include <iterator>

#include <fmt/format.h>

#include "tool/graph/graph_layout.h"
#include "tool/graph/graph_text.h"
#include "tool/text/printable.h"
#include "tool/text/xml_text.h"

namespace tool {

namespace {

constexpr double kLetterWidth = 7.3; // of the monospaced font at 12 pixels, with something to spare
constexpr double kLineHeight = 18;

constexpr const char* kStyle = R"(<style>
  text { font: 12px ui-monospace, "DejaVu Sans Mono", monospace; fill: #1b1f24 }
  .back { fill: #ffffff }
  .node { fill: #eef3fb; stroke: #4a6fa5 }
  .edge { fill: none; stroke: #8a94a3; stroke-width: 1.2 }
  .absent { stroke: #b00020; stroke-dasharray: 4 3 }
  rect.marked { fill: #ffe08a; stroke: #7a5b00; stroke-width: 2 }
  path.marked { stroke: #c2410c; stroke-width: 2.5 }
  .tip { fill: #8a94a3 }
  .tip.marked { fill: #c2410c; stroke: none }
  @media (prefers-color-scheme: dark) {
    text { fill: #e6edf3 }
    .back { fill: #0d1117 }
    .node { fill: #1c2a3f; stroke: #7aa2d9 }
    .edge { stroke: #7d8590 }
    .tip { fill: #7d8590 }
    rect.marked { fill: #5c4a10; stroke: #ffd24d }
    path.marked { stroke: #ff9a5c }
    .tip.marked { fill: #ff9a5c }
  }
</style>
)";

// Straight across a column, curved between two.
std::string PathOf(const std::vector<Point>& way)
{
    std::string path = fmt::format("M{:.1f} {:.1f}", way.front().x, way.front().y);
    for (std::size_t i = 1; i < way.size(); ++i) {
        if (i % 2 == 0) {
            fmt::format_to(std::back_inserter(path), "L{:.1f} {:.1f}", way[i].x, way[i].y);
            continue;
        }
        const double middle = (way[i - 1].x + way[i].x) / 2;
        fmt::format_to(std::back_inserter(path), "C{:.1f} {:.1f} {:.1f} {:.1f} {:.1f} {:.1f}", middle,
                       way[i - 1].y, middle, way[i].y, way[i].x, way[i].y);
    }
    return path;
}

// From the node's upper right corner round to its right side.
std::string LoopOf(const Box& box)
{
    const double right = box.corner.x + box.width;
    return fmt::format("M{:.1f} {:.1f}c4 -12 24 -6 22 6c-1 7 -10 8 -17 7", right - 8, box.corner.y);
}

std::string EdgeMarkup(const GraphPicture& picture, const GraphLayout& layout, std::size_t number)
{
    const GraphEdge& edge = picture.edges[number];
    const char* marked = edge.isHighlighted ? " marked" : "";
    const std::vector<Point>& way = layout.edges[number];
    if (edge.from == edge.to) {
        return fmt::format("<path class=\"edge{}\" d=\"{}\"/>\n", marked, LoopOf(layout.nodes[edge.to]));
    }
    const Point& end = way.back();
    const double back = end.x > way[way.size() - 2].x ? -7 : 7;
    return fmt::format("<path class=\"edge{}\" d=\"{}\"/>"
                       "<path class=\"tip{}\" d=\"M{:.1f} {:.1f}l{} -3.5v7z\"/>\n",
                       marked, PathOf(way), marked, end.x, end.y, back);
}

std::string NodeMarkup(const GraphNode& node, const Box& box)
{
    const std::string classes = fmt::format("node{}{}", node.isHighlighted ? " marked" : "",
                                            node.state == NodeState::KEPT ? "" : " absent");
    std::string title = XmlText(node.name);
    title += node.state == NodeState::DROPPED ? ": dropped" : "";
    title += node.state == NodeState::MISSING ? ": not configured" : "";
    title += node.group.empty() ? "" : fmt::format(" ({})", XmlText(node.group));
    return fmt::format("<g><title>{}</title><rect class=\"{}\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" "
                       "height=\"{:.1f}\" rx=\"5\"/><text x=\"{:.1f}\" y=\"{:.1f}\">{}</text></g>\n",
                       title, classes, box.corner.x, box.corner.y, box.width, box.height, box.corner.x + 10,
                       box.corner.y + box.height / 2 + 4, XmlText(Label(node.name)));
}

} // namespace

std::string ToSvg(const GraphPicture& picture)
{
    std::vector<double> widths;
    for (const GraphNode& node : picture.nodes) {
        widths.push_back(kLetterWidth * static_cast<double>(Width(Label(node.name))));
    }
    const GraphLayout layout = LayOut(picture, widths);
    double width = layout.width;
    for (const std::string& line : picture.legend) {
        width = std::max(width, 20 + kLetterWidth * static_cast<double>(Width(line)));
    }
    const double height = layout.height + 10 + kLineHeight * static_cast<double>(picture.legend.size());
    std::string text = fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" "
                                   "height=\"{1:.0f}\" viewBox=\"0 0 {0:.0f} {1:.0f}\" role=\"img\">\n"
                                   "<title>Dependency graph</title>\n{2}"
                                   "<rect class=\"back\" width=\"100%\" height=\"100%\"/>\n",
                                   width, height, kStyle);
    for (std::size_t edge = 0; edge < picture.edges.size(); ++edge) {
        text += EdgeMarkup(picture, layout, edge);
    }
    for (std::size_t node = 0; node < picture.nodes.size(); ++node) {
        text += NodeMarkup(picture.nodes[node], layout.nodes[node]);
    }
    double y = layout.height + kLineHeight - 4;
    for (const std::string& line : picture.legend) {
        text += fmt::format("<text x=\"10\" y=\"{:.1f}\">{}</text>\n", y, XmlText(line));
        y += kLineHeight;
    }
    return text + "</svg>\n";
}

} // namespace tool
