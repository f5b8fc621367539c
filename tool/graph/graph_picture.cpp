#include "tool/graph/graph_picture.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "tool/library/table_lookup.h"

namespace tool {

namespace {

// Gathers nodes and edges by name, then numbers them.
class Builder {
public:
    explicit Builder(const Configuration& configuration) : configuration_(configuration)
    {
        for (const MissingDependency& one : configuration.missing) {
            dropped_.insert(one.application);
        }
    }

    void AddNode(const std::string& name, std::size_t app, NodeState state)
    {
        GraphNode& node = nodes_[name];
        node.app = app;
        node.state = state;
    }

    // Nodes that are not there yet are looked up by their very names, as the library compares them.
    void AddEdge(const std::string& from, const std::string& to)
    {
        AddIfAbsent(from);
        AddIfAbsent(to);
        edges_.emplace_back(from, to);
    }

    GraphPicture Take()
    {
        GraphPicture picture;
        std::map<std::string_view, Vertex> numbers;
        for (auto& [name, node] : nodes_) {
            numbers.emplace_hint(numbers.end(), name, static_cast<Vertex>(picture.nodes.size()));
            node.name = name;
            node.isPattern = configuration_.library.IsDynamicPara(name);
            picture.nodes.push_back(node);
        }
        picture.edges.reserve(edges_.size());
        for (const auto& [from, to] : edges_) {
            picture.edges.push_back({numbers.at(from), numbers.at(to), false});
        }
        std::sort(picture.edges.begin(), picture.edges.end(), [](const GraphEdge& a, const GraphEdge& b) {
            return std::tie(a.from, a.to) < std::tie(b.from, b.to);
        });
        return picture;
    }

private:
    void AddIfAbsent(const std::string& name)
    {
        if (nodes_.count(name) != 0) {
            return;
        }
        const std::size_t app = configuration_.FindApp(name);
        const bool isDropped = dropped_.count(name) != 0;
        AddNode(name, app,
                app != kNone ? NodeState::KEPT : (isDropped ? NodeState::DROPPED : NodeState::MISSING));
    }

    const Configuration& configuration_;
    std::set<std::string> dropped_;
    std::map<std::string, GraphNode> nodes_;
    std::vector<std::pair<std::string, std::string>> edges_;
};

Successors Lists(const GraphPicture& picture, Vertex GraphEdge::*from, Vertex GraphEdge::*to)
{
    Successors lists(picture.nodes.size());
    for (const GraphEdge& edge : picture.edges) {
        lists[edge.*from].push_back(edge.*to);
    }
    return lists;
}

} // namespace

std::size_t GraphPicture::Find(const std::string& name) const
{
    const auto found =
        std::lower_bound(nodes.begin(), nodes.end(), name,
                         [](const GraphNode& node, const std::string& text) { return node.name < text; });
    return found == nodes.end() || found->name != name ? kNone
                                                       : static_cast<std::size_t>(found - nodes.begin());
}

GraphPicture PictureOfAll(const Configuration& configuration)
{
    Builder builder(configuration);
    for (const auto& [name, depends] : configuration.library.GetApplicationDependsMap()) {
        builder.AddNode(name, configuration.FindApp(name), NodeState::KEPT);
    }
    for (const auto& [name, depends] : configuration.library.GetApplicationDependsMap()) {
        for (const std::string& other : depends) {
            builder.AddEdge(name, other);
        }
    }
    for (const MissingDependency& one : configuration.missing) {
        builder.AddEdge(one.application, one.dependency);
    }
    GraphPicture picture = builder.Take();
    // An application that is there twice has lost the same dependency twice.
    const auto isSame = [](const GraphEdge& a, const GraphEdge& b) {
        return a.from == b.from && a.to == b.to;
    };
    picture.edges.erase(std::unique(picture.edges.begin(), picture.edges.end(), isSame), picture.edges.end());
    picture.legend.emplace_back("a -> b: a depends on b, which starts first");
    return picture;
}

GraphPicture PictureOfRequest(const Configuration& configuration, RequestKind kind,
                              const std::vector<std::string>& names)
{
    Builder builder(configuration);
    const auto entries = EntriesServing(configuration.library, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (entries[i] != nullptr) {
            builder.AddNode(names[i], configuration.FindApp(entries[i]->first), NodeState::KEPT);
        }
    }
    const Waits waits = RequestWaits(configuration.library, kind, names);
    for (const auto& [name, others] : waits) {
        for (const std::string& other : others) {
            builder.AddEdge(name, other);
        }
    }
    GraphPicture picture = builder.Take();
    picture.legend.emplace_back(kind == RequestKind::START ? "a -> b: a waits until b has started"
                                                           : "a -> b: a waits until b has stopped");
    return picture;
}

Successors WaitsFor(const GraphPicture& picture)
{
    return Lists(picture, &GraphEdge::from, &GraphEdge::to);
}

Successors WaitedForBy(const GraphPicture& picture)
{
    return Lists(picture, &GraphEdge::to, &GraphEdge::from);
}

} // namespace tool
