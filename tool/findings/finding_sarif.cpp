#include "tool/findings/finding_sarif.h"

#include <string>
#include <string_view>
#include <unordered_map>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/load.h"
#include "tool/rules/rules.h"

namespace tool {

namespace {

// A path as a relative reference, or as a "file" URI where it is absolute.
std::string UriOf(const std::string& path)
{
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/";
    std::string uri = !path.empty() && path.front() == '/' ? "file://" : "";
    for (const char c : path) {
        uri += kPlain.find(c) != std::string_view::npos
                   ? std::string(1, c)
                   : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return uri;
}

Json LocationJson(const Position& position, std::size_t length)
{
    Json place{{"artifactLocation", {{"uri", UriOf(position.file)}}}};
    if (position.mark.line != 0) {
        place["region"] = {{"startLine", position.mark.line}, {"startColumn", position.mark.column}};
        if (length != 0) {
            place["region"]["endColumn"] = position.mark.column + length;
        }
    }
    return {{"physicalLocation", std::move(place)}};
}

Json RelatedJson(const Position& position, const std::string& text, std::size_t number)
{
    Json location{{"id", number}};
    location.update(LocationJson(position, 0));
    location["message"] = {{"text", text}};
    return location;
}

std::string_view LevelOf(Level level)
{
    return level == Level::OFF ? "none" : LevelName(level);
}

Json RuleJson(const Rule& rule)
{
    return {{"id", rule.id},
            {"shortDescription", {{"text", rule.summary}}},
            {"fullDescription", {{"text", rule.text}}},
            {"help", {{"text", fmt::format("{}\n\n{}", rule.effect, rule.fix)}}},
            {"defaultConfiguration", {{"level", LevelOf(rule.level)}}},
            {"properties", {{"group", GroupTitle(rule.group)}}}};
}

class SarifPrinter {
public:
    SarifPrinter(const CheckResult& result, bool isDone) : result_(result), isDone_(isDone)
    {
        for (const Rule* rule : Rules()) {
            indexOf_.emplace(rule, indexOf_.size());
        }
    }

    Json Print() const
    {
        Json run;
        run["tool"]["driver"] = {{"name", "startplan"}, {"version", STARTPLAN_VERSION}};
        Json& rules = run["tool"]["driver"]["rules"] = Json::array();
        for (const Rule* rule : Rules()) {
            rules.push_back(RuleJson(*rule));
        }
        Json invocation{{"executionSuccessful", isDone_}};
        invocation["properties"]["libraryCalled"] = result_.configuration.WasRead();
        if (result_.configuration.WasRead()) {
            invocation["properties"]["libraryResult"] = ResultJson(result_.configuration.result);
        }
        run["invocations"] = Json::array({std::move(invocation)});
        run["columnKind"] = "unicodeCodePoints";
        run["results"] = Json::array();
        for (const Finding& finding : result_.findings) {
            run["results"].push_back(ResultOf(finding));
        }
        return {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                {"version", "2.1.0"},
                {"runs", Json::array({std::move(run)})}};
    }

private:
    Json ResultOf(const Finding& finding) const
    {
        std::string text = finding.message;
        if (!finding.effect.empty()) {
            text += "\neffect: " + finding.effect;
        }
        if (!finding.help.empty()) {
            text += "\nhelp: " + finding.help;
        }
        Json json{{"ruleId", finding.rule->id},
                  {"ruleIndex", indexOf_.at(finding.rule)},
                  {"level", LevelOf(finding.level)},
                  {"message", {{"text", text}}},
                  {"locations", Json::array({LocationJson(finding.position, finding.length)})}};
        Json related = RelatedOf(finding);
        if (!related.empty()) {
            json["relatedLocations"] = std::move(related);
        }
        return json;
    }

    // The finding's own related places, then the namings that lead to its file.
    Json RelatedOf(const Finding& finding) const
    {
        const SourceTree& tree = result_.configuration.tree;
        Json related = Json::array();
        for (const Place& place : finding.related) {
            related.push_back(RelatedJson(place.position, place.text, related.size()));
        }
        std::size_t visit = finding.visit;
        while (visit != kNone && tree.Visits()[visit].parent != kNone) {
            const Visit& naming = tree.Visits()[visit];
            related.push_back(RelatedJson(tree.PositionOf(naming.parent, naming.item),
                                          "the file is named here", related.size()));
            visit = naming.parent;
        }
        return related;
    }

    const CheckResult& result_;
    bool isDone_;
    std::unordered_map<const Rule*, std::size_t> indexOf_;
};

} // namespace

void PrintFindingsAsSarif(Session& session, const CheckResult& result, bool isDone)
{
    session.PrintJson(SarifPrinter(result, isDone).Print());
}

} // namespace tool
