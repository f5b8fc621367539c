#include "tool/commands/explanation_text.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "startplan/result_codes.h"
#include "tool/command_line/load.h"
#include "tool/command_line/plan_remarks.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kMostChains = 20;
constexpr std::size_t kMostLinks = 12; // of a chain or a list of rounds; what is cut stands in the middle

std::optional<Position> PositionOfEdge(const Configuration& configuration, const std::string& name,
                                       const std::string& needed)
{
    const std::vector<std::size_t>& entries = configuration.tree.EntriesNamed(name);
    if (entries.empty()) {
        return std::nullopt;
    }
    return configuration.tree.PositionOfDependency(configuration.tree.Entries()[entries.back()], needed);
}

// The places of a long list that are shown: its beginning and its end, with kNone for what is left out.
std::vector<std::size_t> Shown(std::size_t size, bool isFull)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < size; ++i) {
        const bool isMiddle = i >= kMostLinks / 2 && i + kMostLinks / 2 < size;
        if (isFull || size <= kMostLinks + 1 || !isMiddle) {
            places.push_back(i);
        } else if (places.back() != kNone) {
            places.push_back(kNone);
        }
    }
    return places;
}

std::string ChainText(const GraphView& graph, const std::vector<Vertex>& way, bool isFull)
{
    std::string text;
    for (const std::size_t place : Shown(way.size(), isFull)) {
        text += text.empty() ? "" : " -> ";
        text += place == kNone ? fmt::format("({} more)", way.size() - kMostLinks)
                               : Printable(graph.names[way[place]]);
    }
    return text;
}

// All that a search has reached, the start itself left out: the nearest first, then by name.
std::vector<Vertex> NearestFirst(const Ways& ways)
{
    std::vector<Vertex> reached;
    for (Vertex vertex = 0; vertex < ways.steps.size(); ++vertex) {
        if (ways.Reaches(vertex) && ways.steps[vertex] != 0) {
            reached.push_back(vertex);
        }
    }
    std::stable_sort(reached.begin(), reached.end(),
                     [&ways](Vertex a, Vertex b) { return ways.steps[a] < ways.steps[b]; });
    return reached;
}

std::string FateText(const Configuration& configuration, const EntryFate& fate, const std::string& name)
{
    switch (fate.state) {
    case EntryState::KEPT:
        return fate.isOverruled ? "kept, but the dependencies of a later entry count" : "kept";
    case EntryState::INCOMPLETE:
        return fmt::format("left out: {}", fate.reason);
    case EntryState::DROPPED: {
        std::string text = "dropped:";
        for (const std::string& missing : fate.missing) {
            const auto position = PositionOfEdge(configuration, name, missing);
            const auto entry = configuration.PositionOfApp(missing);
            text +=
                fmt::format("\n    {}: it depends on \"{}\", which is not {}",
                            position ? Printable(ToText(*position)) : "", Printable(missing),
                            entry ? fmt::format("kept (see {})", Printable(ToText(*entry))) : "configured");
        }
        return text;
    }
    case EntryState::UNREAD:
        break;
    }
    return fmt::format("not taken over: {}", fate.reason);
}

class ExplanationPrinter {
public:
    ExplanationPrinter(Session& session, const Configuration& configuration, const Explanation& all,
                       bool isFull)
        : session_(session), configuration_(configuration), all_(all), isFull_(isFull)
    {}

    void Print()
    {
        session_.Print(session_.In(Color::BOLD, Printable(all_.name)) + "\n");
        PrintEntries();
        PrintKeys();
        PrintChains("Needs", all_.needs, false);
        PrintChains("Needed by", all_.neededBy, true);
        PrintRound("Start", all_.start);
        PrintRound("Stop", all_.stop);
    }

private:
    void PrintEntries()
    {
        if (all_.entries.empty()) {
            session_.Print("  no entry has this name\n");
        }
        for (const EntryFate& fate : all_.entries) {
            const SourceEntry& entry = configuration_.tree.Entries()[fate.entry];
            session_.Print(fmt::format("  {}: {}\n", Printable(ToText(configuration_.tree.PositionOf(entry))),
                                       FateText(configuration_, fate, all_.name)));
            session_.Print(
                fmt::format("    read by {}\n", Printable(configuration_.tree.ChainTo(entry.visit))));
        }
    }

    void PrintKeys()
    {
        if (!all_.IsServed()) {
            session_.Print("  no request for it is served: no key of the table matches it\n");
            return;
        }
        session_.Print(all_.servedBy == all_.name
                           ? std::string("  a request for it is served by its own entry\n")
                           : fmt::format("  a request for it is served by the entry \"{}\"\n",
                                         Printable(all_.servedBy)));
        if (!all_.alsoMatching.empty()) {
            session_.Print(WrapNames(
                session_,
                "  which of the matching ones serves it is not defined; also: ", all_.alsoMatching));
        }
    }

    void PrintChains(const char* title, const Ways& ways, bool isBackwards)
    {
        const std::vector<Vertex> reached = NearestFirst(ways);
        if (reached.empty()) {
            session_.Print(fmt::format(
                "\n{}\n",
                session_.In(Color::BOLD, fmt::format("{} {}", title, isBackwards ? "nobody" : "nothing"))));
            return;
        }
        const auto direct = std::count_if(reached.begin(), reached.end(),
                                          [&ways](Vertex vertex) { return ways.steps[vertex] == 1; });
        session_.Print(
            fmt::format("\n{}\n", session_.In(Color::BOLD, fmt::format("{} {} directly, {} in all:", title,
                                                                       direct, reached.size()))));
        const std::size_t shown = isFull_ ? reached.size() : std::min(kMostChains, reached.size());
        for (std::size_t i = 0; i < shown; ++i) {
            std::vector<Vertex> way = ways.To(reached[i]);
            if (isBackwards) {
                std::reverse(way.begin(), way.end());
            }
            session_.Print(fmt::format("  {}{}\n", ChainText(all_.graph, way, isFull_),
                                       all_.graph.isKnown[reached[i]] ? "" : " (not in the table)"));
        }
        if (shown < reached.size()) {
            session_.Print(fmt::format("  ... {} more; --full shows them all\n", reached.size() - shown));
        }
    }

    void PrintRound(const char* title, const RoundFate& fate)
    {
        const std::string all = fmt::format("{} in a request for all:", title);
        session_.Print("\n" + session_.In(Color::BOLD, all) + " ");
        if (fate.round == 0) {
            session_.Print("never, " + WhyNever(fate) + "\n");
            return;
        }
        session_.Print(fmt::format("round {} of {}{}\n", fate.round, fate.plan.rounds.size(),
                                   all_.IsServed() ? "" : ", pulled in, though there is no record of it"));
        const std::size_t digits = std::to_string(fate.round).size();
        for (const std::size_t place : Shown(fate.because.size(), isFull_)) {
            session_.Print(place == kNone ? fmt::format("  ({} more)\n", fate.because.size() - kMostLinks)
                                          : fmt::format("  round {:>{}}  {}\n", place + 1, digits,
                                                        Printable(fate.because[place])));
        }
    }

    std::string WhyNever(const RoundFate& fate) const
    {
        if (!all_.IsServed()) {
            return "since no request for it is served";
        }
        if (fate.plan.result != PARSE_ERR_GRAPH_CYCLE) {
            return "since a name that it waits for is not found";
        }
        for (const Cycle& cycle : fate.plan.cycles) {
            if (std::binary_search(cycle.members.begin(), cycle.members.end(), all_.name)) {
                return "since it is on a cycle; \"plan\" shows it";
            }
        }
        const std::vector<std::string>& blocked = fate.plan.blocked;
        return std::binary_search(blocked.begin(), blocked.end(), all_.name)
                   ? "since it waits for a cycle; \"plan\" shows it"
                   : "since there is a cycle, though it is not held up by it; \"plan\" shows it";
    }

    Session& session_;
    const Configuration& configuration_;
    const Explanation& all_;
    bool isFull_;
};

// The chains as a tree: following "next" leads to the name in question.
Json ChainsJson(const GraphView& graph, const Ways& ways)
{
    Json json = Json::array();
    for (const Vertex vertex : NearestFirst(ways)) {
        json.push_back({{"name", graph.names[vertex]},
                        {"steps", ways.steps[vertex]},
                        {"next", graph.names[ways.previous[vertex]]},
                        {"known", static_cast<bool>(graph.isKnown[vertex])}});
    }
    return json;
}

Json RoundJson(const RoundFate& fate)
{
    Json json{{"round", fate.round == 0 ? Json(nullptr) : Json(fate.round)},
              {"rounds", fate.plan.rounds.size()},
              {"result", ResultJson(fate.plan.result)},
              {"because", fate.because}};
    return json;
}

} // namespace

void PrintExplanation(Session& session, const Configuration& configuration, const Explanation& all,
                      bool isFull)
{
    ExplanationPrinter(session, configuration, all, isFull).Print();
}

void AddExplanationJson(Json& json, const Configuration& configuration, const Explanation& all)
{
    const char* states[] = {"kept", "incomplete", "dropped", "unread"};
    json["name"] = all.name;
    json["entries"] = Json::array();
    for (const EntryFate& fate : all.entries) {
        const SourceEntry& entry = configuration.tree.Entries()[fate.entry];
        json["entries"].push_back({{"position", PositionJson(configuration.tree.PositionOf(entry))},
                                   {"chain", configuration.tree.ChainTo(entry.visit)},
                                   {"state", states[static_cast<std::size_t>(fate.state)]},
                                   {"overruled", fate.isOverruled},
                                   {"reason", fate.reason},
                                   {"missing", fate.missing}});
    }
    json["served_by"] = all.IsServed() ? Json(all.servedBy) : Json(nullptr);
    json["also_matching"] = all.alsoMatching;
    json["needs"] = ChainsJson(all.graph, all.needs);
    json["needed_by"] = ChainsJson(all.graph, all.neededBy);
    json["start"] = RoundJson(all.start);
    json["stop"] = RoundJson(all.stop);
}

std::string WayText(const Configuration& configuration, const GraphView& graph,
                    const std::vector<Vertex>& way)
{
    if (way.empty()) {
        return "";
    }
    std::string text = ChainText(graph, way, true) + "\n";
    for (std::size_t i = 0; i + 1 < way.size(); ++i) {
        const std::string& name = graph.names[way[i]];
        const std::string& needed = graph.names[way[i + 1]];
        const auto position = PositionOfEdge(configuration, name, needed);
        text += fmt::format("  {}: {} depends on {}\n", position ? Printable(ToText(*position)) : "",
                            Printable(name), Printable(needed));
    }
    return text;
}

Json WayJson(const Configuration& configuration, const GraphView& graph, const std::vector<Vertex>& way)
{
    Json json = Json::array();
    for (std::size_t i = 0; i + 1 < way.size(); ++i) {
        const std::string& name = graph.names[way[i]];
        const std::string& needed = graph.names[way[i + 1]];
        Json step{{"name", name}, {"needs", needed}};
        if (const auto position = PositionOfEdge(configuration, name, needed)) {
            step["position"] = PositionJson(*position);
        }
        json.push_back(std::move(step));
    }
    return json;
}

} // namespace tool
