#include "tool/graph/graph_text.h"

#include <cstddef>
#include <iterator>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/graph/graph_groups.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kLongestLabel = 48;

bool IsContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// The first `count` characters.
std::string_view Front(std::string_view text, std::size_t count)
{
    std::size_t at = 0;
    while (at < text.size() && (count > 0 || IsContinuation(text[at]))) {
        count -= IsContinuation(text[at]) ? 0U : 1U;
        ++at;
    }
    return text.substr(0, at);
}

// In a quoted string of the dot language. Graphviz reads HTML's entities in it, too.
std::string DotText(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        if (c == '&') {
            out += "&amp;";
            continue;
        }
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
    }
    return out;
}

// Mermaid takes quotes, HTML and Markdown in a label for itself, so all but the harmless characters go by
// their number.
std::string MermaidText(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isWord = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isWord || byte >= 0x80 || c == ' ' || c == '.' || c == ',' || c == '/' || c == '_') {
            out += c;
            continue;
        }
        fmt::format_to(std::back_inserter(out), "#{};", static_cast<unsigned>(byte));
    }
    return out;
}

std::string DotNode(const GraphPicture& picture, Vertex number)
{
    const GraphNode& node = picture.nodes[number];
    std::string style = "rounded";
    std::string more;
    if (node.state != NodeState::KEPT) {
        style += ",dashed";
        more += ", color=\"#b00020\"";
    }
    if (node.isPattern) {
        more += ", peripheries=2";
    }
    if (node.isHighlighted) {
        style += ",filled";
        more += ", fillcolor=\"#ffd24d\", penwidth=2";
    }
    return fmt::format("n{} [label=\"{}\", tooltip=\"{}\", style=\"{}\"{}];\n", number,
                       DotText(Label(node.name)), DotText(Printable(node.name)), style, more);
}

void AddMermaidNodes(const GraphPicture& picture, std::string& text)
{
    std::size_t groupNumber = 0;
    for (const auto& [group, members] : Groups(picture)) {
        const char* indent = group.empty() ? "  " : "    ";
        if (!group.empty()) {
            text += fmt::format("  subgraph g{}[\"{}\"]\n", groupNumber++, MermaidText(Label(group)));
        }
        for (const Vertex node : members) {
            const std::string label = MermaidText(Label(picture.nodes[node].name));
            text += fmt::format(picture.nodes[node].isPattern ? "{}n{}[[\"{}\"]]\n" : "{}n{}[\"{}\"]\n",
                                indent, node, label);
        }
        text += group.empty() ? "" : "  end\n";
    }
}

void AddMermaidClasses(const GraphPicture& picture, std::string& text)
{
    std::string marked;
    std::string absent;
    for (Vertex node = 0; node < picture.nodes.size(); ++node) {
        if (picture.nodes[node].isHighlighted) {
            marked += fmt::format("{}n{}", marked.empty() ? "" : ",", node);
        }
        if (picture.nodes[node].state != NodeState::KEPT) {
            absent += fmt::format("{}n{}", absent.empty() ? "" : ",", node);
        }
    }
    std::string arrows;
    for (std::size_t edge = 0; edge < picture.edges.size(); ++edge) {
        if (picture.edges[edge].isHighlighted) {
            arrows += fmt::format("{}{}", arrows.empty() ? "" : ",", edge);
        }
    }
    if (!marked.empty()) {
        text += "  classDef marked fill:#ffd24d,stroke:#7a5b00,color:#000\n";
        text += fmt::format("  class {} marked\n", marked);
    }
    if (!absent.empty()) {
        text += "  classDef absent stroke:#b00020,stroke-dasharray:4\n";
        text += fmt::format("  class {} absent\n", absent);
    }
    if (!arrows.empty()) {
        text += fmt::format("  linkStyle {} stroke:#c2410c,stroke-width:3px\n", arrows);
    }
}

const char* StateName(NodeState state)
{
    const char* names[] = {"kept", "dropped", "missing"};
    return names[static_cast<std::size_t>(state)];
}

} // namespace

std::string Label(const std::string& name)
{
    const std::string text = Printable(name);
    if (Width(text) <= kLongestLabel) {
        return text;
    }
    return fmt::format("{}{}", Front(text, kLongestLabel / 2), CutFront(text, kLongestLabel / 2));
}

std::string ToDot(const GraphPicture& picture)
{
    std::string text = "digraph startplan {\n  rankdir=RL;\n  charset=\"UTF-8\";\n";
    text += "  node [shape=box, fontname=\"sans-serif\"];\n  edge [color=\"#555555\"];\n";
    std::string legend;
    for (const std::string& line : picture.legend) {
        legend += DotText(line) + "\\l";
    }
    text += fmt::format("  label=\"{}\";\n  labeljust=l;\n", legend);
    std::size_t groupNumber = 0;
    for (const auto& [group, members] : Groups(picture)) {
        if (!group.empty()) {
            text += fmt::format("  subgraph cluster_{} {{\n    label=\"{}\";\n", groupNumber++,
                                DotText(Label(group)));
        }
        for (const Vertex node : members) {
            text += (group.empty() ? "  " : "    ") + DotNode(picture, node);
        }
        text += group.empty() ? "" : "  }\n";
    }
    for (const GraphEdge& edge : picture.edges) {
        text += fmt::format("  n{} -> n{}{};\n", edge.from, edge.to,
                            edge.isHighlighted ? " [color=\"#c2410c\", penwidth=3]" : "");
    }
    return text + "}\n";
}

std::string ToMermaid(const GraphPicture& picture)
{
    std::string text;
    for (const std::string& line : picture.legend) {
        text += fmt::format("%% {}\n", line);
    }
    text += "flowchart RL\n";
    AddMermaidNodes(picture, text);
    for (const GraphEdge& edge : picture.edges) {
        text += fmt::format("  n{} --> n{}\n", edge.from, edge.to);
    }
    AddMermaidClasses(picture, text);
    return text;
}

void AddGraph(Json& json, const GraphPicture& picture)
{
    json["legend"] = picture.legend;
    Json& nodes = json["nodes"] = Json::array();
    for (const GraphNode& node : picture.nodes) {
        Json one{{"name", node.name},
                 {"state", StateName(node.state)},
                 {"pattern", node.isPattern},
                 {"highlighted", node.isHighlighted}};
        if (!node.group.empty()) {
            one["group"] = node.group;
        }
        nodes.push_back(std::move(one));
    }
    Json& edges = json["edges"] = Json::array();
    for (const GraphEdge& edge : picture.edges) {
        edges.push_back({{"from", edge.from}, {"to", edge.to}, {"highlighted", edge.isHighlighted}});
    }
}

} // namespace tool
