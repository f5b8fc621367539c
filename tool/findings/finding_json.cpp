#include "tool/findings/finding_json.h"

#include <nlohmann/json.hpp>

#include "tool/command_line/load.h"

namespace tool {

namespace {

// The namings that lead to the file: the top-level file's item first.
Json ChainJson(const SourceTree& tree, std::size_t visit)
{
    std::vector<Json> chain;
    while (visit != kNone && tree.Visits()[visit].parent != kNone) {
        const Visit& naming = tree.Visits()[visit];
        chain.push_back(PositionJson(tree.PositionOf(naming.parent, naming.item)));
        visit = naming.parent;
    }
    return Json(std::vector<Json>(chain.rbegin(), chain.rend()));
}

Json FindingJson(const SourceTree& tree, const Finding& finding)
{
    Json json{{"rule", finding.rule->id},
              {"level", LevelName(finding.level)},
              {"position", PositionJson(finding.position)},
              {"length", finding.length},
              {"message", finding.message},
              {"effect", finding.effect},
              {"help", finding.help}};
    json["chain"] = ChainJson(tree, finding.visit);
    json["related"] = Json::array();
    for (const Place& place : finding.related) {
        json["related"].push_back({{"position", PositionJson(place.position)}, {"text", place.text}});
    }
    return json;
}

} // namespace

void PrintFindingsAsJson(Session& session, const CheckResult& result)
{
    const Configuration& configuration = result.configuration;
    Json json = ConfigurationJson("check", configuration);
    if (!configuration.WasRead()) {
        json["result"] = nullptr;
    }
    json["library_called"] = configuration.WasRead();
    json["files_read"] = configuration.FilesRead();
    json["files_not_read"] = configuration.FilesSkipped();
    json["applications"] = configuration.apps.size();
    json["summary"] = {{"errors", result.Count(Level::ERROR)},
                       {"warnings", result.Count(Level::WARNING)},
                       {"notes", result.Count(Level::NOTE)},
                       {"ignored", result.ignored}};
    json["findings"] = Json::array();
    for (const Finding& finding : result.findings) {
        json["findings"].push_back(FindingJson(configuration.tree, finding));
    }
    session.PrintJson(json);
}

} // namespace tool
