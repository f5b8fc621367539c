#include "tool/commands/configuration_diff_text.h"

#include <map>
#include <optional>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/load.h"
#include "tool/command_line/plan_remarks.h"
#include "tool/keys/settings.h"
#include "tool/library/result_names.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

std::string At(const Configuration& configuration, const std::string& name)
{
    const std::optional<Position> position = configuration.PositionOfApp(name);
    return position ? fmt::format(" at {}", Printable(ToText(*position))) : std::string();
}

class DifferencesPrinter {
public:
    DifferencesPrinter(Session& session, const Configuration& before, const Configuration& after,
                       const ConfigurationDiff& diff)
        : session_(session), before_(before), after_(after), diff_(diff)
    {}

    void Print()
    {
        if (diff_.resultBefore != diff_.resultAfter) {
            Heading(fmt::format("The library's result: {} -> {}", ResultText(diff_.resultBefore),
                                ResultText(diff_.resultAfter)));
        }
        PrintNames("Added:", after_, diff_.added, Color::GREEN);
        PrintNames("Removed:", before_, diff_.removed, Color::RED);
        PrintChanged();
        PrintPairs("Dropped now:", after_, diff_.droppedAdded);
        PrintPairs("No longer dropped:", before_, diff_.droppedRemoved);
        PrintNames("Incomplete, so left out now:", after_, diff_.incompleteAdded, Color::RED);
        PrintNames("No longer left out as incomplete:", before_, diff_.incompleteRemoved, Color::GREEN);
        PrintRequest("Start", diff_.start);
        PrintRequest("Stop", diff_.stop);
        if (!session_.Options().isQuiet) {
            PrintClosingLine();
        }
    }

private:
    void Heading(const std::string& text, Color color = Color::YELLOW)
    {
        session_.Print((isFirst_ ? "" : "\n") + session_.In(color, text) + "\n");
        isFirst_ = false;
    }

    void PrintNames(const char* title, const Configuration& configuration,
                    const std::vector<std::string>& names, Color color)
    {
        if (!names.empty()) {
            Heading(title, color);
        }
        for (const std::string& name : names) {
            session_.Print(fmt::format("  {}{}\n", Printable(name), At(configuration, name)));
        }
    }

    void PrintPairs(const char* title, const Configuration& configuration, const std::vector<NamePair>& pairs)
    {
        if (!pairs.empty()) {
            Heading(title, Color::RED);
        }
        for (const auto& [name, missing] : pairs) {
            session_.Print(fmt::format("  {}{}: \"{}\" is not configured\n", Printable(name),
                                       At(configuration, name), Printable(missing)));
        }
    }

    void PrintChanged()
    {
        if (!diff_.changed.empty()) {
            Heading("Changed:");
        }
        for (const AppChange& change : diff_.changed) {
            session_.Print(fmt::format("  {}{}\n", Printable(change.name), At(after_, change.name)));
            for (const SettingChange& setting : change.settings) {
                session_.Print(fmt::format("      {}: {} -> {}\n", setting.name,
                                           Printable(ValueText(setting.before)),
                                           Printable(ValueText(setting.after))));
            }
            if (!change.dependsAdded.empty()) {
                session_.Print(WrapNames(session_, "      depends also on: ", change.dependsAdded));
            }
            if (!change.dependsRemoved.empty()) {
                session_.Print(WrapNames(session_, "      depends no longer on: ", change.dependsRemoved));
            }
        }
    }

    void PrintRequest(const char* title, const RequestChange& change)
    {
        if (change.IsSame()) {
            return;
        }
        Heading(fmt::format("{} in a request for all:", title));
        const std::string was = Outcome(change.before);
        const std::string is = Outcome(change.after);
        session_.Print(was == is ? fmt::format("  {}\n", is) : fmt::format("  {} -> {}\n", was, is));
        std::map<std::pair<std::size_t, std::size_t>, std::vector<std::string>> moves;
        for (const std::string& name : change.moved) {
            moves[{change.before.RoundOf(name), change.after.RoundOf(name)}].push_back(name);
        }
        for (const auto& [rounds, names] : moves) {
            session_.Print(WrapNames(
                session_, fmt::format("  {} -> {}: ", RoundText(rounds.first), RoundText(rounds.second)),
                names));
        }
        const bool hasBoth = !change.before.critical.empty() && !change.after.critical.empty();
        if (hasBoth && change.before.critical != change.after.critical) {
            session_.Print(WrapNames(session_, "  critical path before: ", change.before.critical));
            session_.Print(WrapNames(session_, "  critical path now:    ", change.after.critical));
        }
    }

    static std::string RoundText(std::size_t round)
    {
        return round == 0 ? "never" : fmt::format("round {}", round);
    }

    static std::string Outcome(const RequestOutcome& outcome)
    {
        std::string text = fmt::format("{} {}, {} ms", outcome.rounds,
                                       outcome.rounds == 1 ? "round" : "rounds", outcome.makespan);
        if (outcome.rounds == 0) {
            text = outcome.cycles.empty() ? "nothing" : "nothing, because of a cycle";
        }
        for (const std::vector<std::string>& members : outcome.cycles) {
            text += " of";
            for (const std::string& name : members) {
                text += fmt::format("{} {}", &name == &members.front() ? "" : ",", Printable(name));
            }
        }
        return text;
    }

    void PrintClosingLine()
    {
        if (diff_.IsSame()) {
            session_.Print(fmt::format("no difference: {} applications\n", after_.appByName.size()));
            return;
        }
        session_.Print(fmt::format("\n{} added, {} removed, {} changed; {} dependencies added, {} removed\n",
                                   diff_.added.size(), diff_.removed.size(), diff_.changed.size(),
                                   diff_.edgesAdded.size(), diff_.edgesRemoved.size()));
    }

    Session& session_;
    const Configuration& before_;
    const Configuration& after_;
    const ConfigurationDiff& diff_;
    bool isFirst_ = true;
};

Json NamesJson(const Configuration& configuration, const std::vector<std::string>& names)
{
    Json json = Json::array();
    for (const std::string& name : names) {
        Json one{{"name", name}};
        if (const auto position = configuration.PositionOfApp(name)) {
            one["position"] = PositionJson(*position);
        }
        json.push_back(std::move(one));
    }
    return json;
}

Json PairsJson(const char* second, const std::vector<NamePair>& pairs)
{
    Json json = Json::array();
    for (const auto& [name, other] : pairs) {
        Json one{{"name", name}};
        one[second] = other;
        json.push_back(std::move(one));
    }
    return json;
}

Json ChangedJson(const ConfigurationDiff& diff)
{
    Json json = Json::array();
    for (const AppChange& change : diff.changed) {
        Json settings = Json::array();
        for (const SettingChange& setting : change.settings) {
            settings.push_back({{"name", setting.name}, {"old", setting.before}, {"new", setting.after}});
        }
        json.push_back({{"name", change.name},
                        {"settings", std::move(settings)},
                        {"depends_added", change.dependsAdded},
                        {"depends_removed", change.dependsRemoved}});
    }
    return json;
}

Json OutcomeJson(const RequestOutcome& outcome)
{
    return {{"result", ResultJson(outcome.result)},
            {"rounds", outcome.rounds},
            {"makespan", outcome.makespan},
            {"critical_path", outcome.critical},
            {"cycles", outcome.cycles}};
}

Json RoundJson(std::size_t round)
{
    return round == 0 ? Json(nullptr) : Json(round);
}

Json RequestJson(const RequestChange& change)
{
    Json json{{"old", OutcomeJson(change.before)}, {"new", OutcomeJson(change.after)}};
    json["moved"] = Json::array();
    for (const std::string& name : change.moved) {
        json["moved"].push_back({{"name", name},
                                 {"old_round", RoundJson(change.before.RoundOf(name))},
                                 {"new_round", RoundJson(change.after.RoundOf(name))}});
    }
    return json;
}

} // namespace

void PrintDiff(Session& session, const Configuration& before, const Configuration& after,
               const ConfigurationDiff& diff)
{
    DifferencesPrinter(session, before, after, diff).Print();
}

Json DiffJson(const Configuration& before, const Configuration& after, const ConfigurationDiff& diff)
{
    Json json = JsonDocument("diff");
    json["old"] = {{"top", before.request.top}, {"result", ResultJson(before.result)}};
    json["new"] = {{"top", after.request.top}, {"result", ResultJson(after.result)}};
    json["same"] = diff.IsSame();
    json["added"] = NamesJson(after, diff.added);
    json["removed"] = NamesJson(before, diff.removed);
    json["changed"] = ChangedJson(diff);
    json["edges_added"] = PairsJson("depends_on", diff.edgesAdded);
    json["edges_removed"] = PairsJson("depends_on", diff.edgesRemoved);
    json["dropped_added"] = PairsJson("missing", diff.droppedAdded);
    json["dropped_removed"] = PairsJson("missing", diff.droppedRemoved);
    json["incomplete_added"] = diff.incompleteAdded;
    json["incomplete_removed"] = diff.incompleteRemoved;
    json["start"] = RequestJson(diff.start);
    json["stop"] = RequestJson(diff.stop);
    return json;
}

} // namespace tool
