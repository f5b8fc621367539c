#include "tool/graph/graph_groups.h"

#include <map>

namespace tool {

namespace {

std::string PrefixOf(const std::string& name)
{
    const std::size_t end = name.find_first_of("_-./<", 1);
    return name.substr(0, end);
}

} // namespace

void GroupByFile(GraphPicture& picture, const Configuration& configuration)
{
    for (GraphNode& node : picture.nodes) {
        if (node.app != kNone) {
            node.group = configuration.apps[node.app].GetCfgPath();
        } else if (const auto position = configuration.PositionOfApp(node.name)) {
            node.group = position->file;
        }
    }
}

void GroupByPrefix(GraphPicture& picture)
{
    std::map<std::string, std::size_t> counts;
    for (const GraphNode& node : picture.nodes) {
        ++counts[PrefixOf(node.name)];
    }
    for (GraphNode& node : picture.nodes) {
        const std::string prefix = PrefixOf(node.name);
        node.group = counts[prefix] > 1 ? prefix : std::string();
    }
}

std::vector<std::pair<std::string, std::vector<Vertex>>> Groups(const GraphPicture& picture)
{
    std::map<std::string, std::vector<Vertex>> groups;
    for (Vertex node = 0; node < picture.nodes.size(); ++node) {
        groups[picture.nodes[node].group].push_back(node);
    }
    return {groups.begin(), groups.end()};
}

} // namespace tool
