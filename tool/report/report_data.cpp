#include "tool/report/report_data.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "tool/command_line/load.h"
#include "tool/graph/graph_layers.h"
#include "tool/graph/graph_picture.h"
#include "tool/graph/graph_reduction.h"
#include "tool/keys/settings.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

Json PrintablePosition(const Position& position)
{
    return Json{
        {"file", Printable(position.file)}, {"line", position.mark.line}, {"column", position.mark.column}};
}

Json FindingsJson(const CheckResult& result)
{
    Json findings = Json::array();
    for (const Finding& finding : result.findings) {
        Json one{{"level", LevelName(finding.level)},
                 {"rule", finding.rule->id},
                 {"position", PrintablePosition(finding.position)},
                 {"message", finding.message},
                 {"effect", finding.effect},
                 {"help", finding.help}};
        if (finding.visit != kNone) {
            one["chain"] = Printable(result.configuration.tree.ChainTo(finding.visit));
        }
        for (const Place& place : finding.related) {
            one["related"].push_back({{"position", PrintablePosition(place.position)}, {"text", place.text}});
        }
        findings.push_back(std::move(one));
    }
    return findings;
}

// One setting of all applications: its different values, and which of them each application has; that is
// left out where all have the same. Few values differ, so the page stays small and is searched quickly.
Json ColumnJson(const Configuration& configuration, const Setting& setting)
{
    Json column{{"name", setting.name}, {"getter", setting.getter}};
    std::unordered_map<std::string, std::size_t> numbers;
    Json values = Json::array();
    Json of = Json::array();
    bool isNumber = true;
    for (const ApplicationManifest& app : configuration.apps) {
        const Json value = setting.value(app);
        isNumber = isNumber && value.is_number();
        std::string text = Printable(ValueText(value));
        const auto [at, isNew] = numbers.emplace(text, values.size());
        if (isNew) {
            values.push_back(std::move(text));
        }
        of.push_back(at->second);
    }
    column["number"] = isNumber;
    if (values.size() > 1) {
        column["of"] = std::move(of);
    }
    column["values"] = std::move(values);
    return column;
}

Json ApplicationsJson(const Configuration& configuration, const GraphPicture& picture)
{
    Json json{{"count", configuration.apps.size()}, {"columns", Json::array()}};
    for (const Setting& setting : Settings()) {
        json["columns"].push_back(ColumnJson(configuration, setting));
    }
    Json& nodes = json["nodes"] = Json::array();
    Json& lines = json["lines"] = Json::array();
    for (std::size_t app = 0; app < configuration.apps.size(); ++app) {
        const std::size_t node = picture.Find(configuration.apps[app].GetAppName());
        nodes.push_back(node == kNone ? Json() : Json(node));
        const SourceEntry* entry = configuration.EntryOf(app);
        lines.push_back(entry == nullptr ? 0 : configuration.tree.PositionOf(*entry).mark.line);
    }
    return json;
}

// Edges by the numbers of their nodes, one after the other.
Json EdgesJson(const GraphPicture& picture)
{
    Json edges = Json::array();
    for (const GraphEdge& edge : picture.edges) {
        edges.push_back(edge.from);
        edges.push_back(edge.to);
    }
    return edges;
}

// The layer of each node, and its place in there.
void AddPlaces(Json& json, const GraphPicture& picture)
{
    const GraphLayers layers = MakeLayers(picture);
    std::vector<std::size_t> places(layers.slots.size());
    for (const std::vector<Vertex>& layer : layers.layers) {
        for (std::size_t i = 0; i < layer.size(); ++i) {
            places[layer[i]] = i;
        }
    }
    Json& layer = json["layers"] = Json::array();
    Json& place = json["places"] = Json::array();
    for (std::size_t node = 0; node < picture.nodes.size(); ++node) {
        layer.push_back(layers.slots[node].layer);
        place.push_back(places[node]);
    }
}

Json GraphJson(const Configuration& configuration, const GraphPicture& picture)
{
    Json json{{"names", Json::array()},
              {"states", Json::array()},
              {"patterns", Json::array()},
              {"apps", Json::array()}};
    for (std::size_t number = 0; number < picture.nodes.size(); ++number) {
        const GraphNode& node = picture.nodes[number];
        json["names"].push_back(Printable(node.name));
        json["states"].push_back(static_cast<int>(node.state));
        json["apps"].push_back(node.app == kNone ? Json() : Json(node.app));
        if (node.isPattern) {
            json["patterns"].push_back(number);
        }
    }
    json["edges"] = EdgesJson(picture);
    GraphPicture reduced = picture;
    Reduce(reduced);
    json["reduced"] = EdgesJson(reduced);
    AddPlaces(json, picture);
    Json& dropped = json["dropped"] = Json::array();
    for (const MissingDependency& one : configuration.missing) {
        dropped.push_back({{"name", Printable(one.application)}, {"missing", Printable(one.dependency)}});
    }
    return json;
}

} // namespace

Json ReportData(const CheckResult& result, const ReportRequests& requests)
{
    const Configuration& configuration = result.configuration;
    const GraphPicture picture = PictureOfAll(configuration);
    Json json = JsonDocument("report");
    json["top"] = Printable(configuration.request.top);
    json["result"] = ResultJson(configuration.result);
    json["files_read"] = configuration.FilesRead();
    json["files_not_read"] = configuration.FilesSkipped();
    json["ignored"] = result.ignored;
    json["findings"] = FindingsJson(result);
    json["applications"] = ApplicationsJson(configuration, picture);
    json["graph"] = GraphJson(configuration, picture);
    json["times_file"] = Printable(requests.timesFile);
    json["start"] = RequestJson(requests.start, picture);
    json["stop"] = RequestJson(requests.stop, picture);
    return json;
}

} // namespace tool
