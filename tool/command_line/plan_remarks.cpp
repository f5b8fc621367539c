#include "tool/command_line/plan_remarks.h"

#include <algorithm>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "startplan/result_codes.h"
#include "tool/command_line/load.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

constexpr std::size_t kWidthWithoutTerminal = 100;

std::string Joined(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += fmt::format("{}{}", text.empty() ? "" : ", ", Printable(name));
    }
    return text;
}

class RemarksPrinter {
public:
    RemarksPrinter(Session& session, const Configuration& configuration, const RequestPlan& plan,
                   bool isFirst)
        : session_(session), configuration_(configuration), plan_(plan),
          isStart_(plan.kind == RequestKind::START), isFirst_(isFirst)
    {}

    void Print()
    {
        PrintNotFound();
        PrintPulledIn();
        PrintLeftRunning();
        PrintCycles();
        PrintNeverHandedOut();
    }

private:
    void Heading(Color color, const std::string& text)
    {
        session_.Print(isFirst_ ? "" : "\n");
        session_.Print(session_.In(color, text) + "\n");
        isFirst_ = false;
    }

    void PrintNotFound()
    {
        if (plan_.notFound.empty()) {
            return;
        }
        std::vector<std::string> names;
        for (const auto& [known, app] : configuration_.appByName) {
            names.push_back(known);
        }
        Heading(Color::RED, "Not found, so left out:");
        for (const std::string& name : plan_.notFound) {
            const auto position = configuration_.PositionOfApp(name);
            session_.Print(fmt::format(
                "  {}{}\n", Printable(name),
                position ? fmt::format(": the entry at {} is not kept", Printable(ToText(*position)))
                         : DidYouMean(name, names)));
        }
    }

    void PrintPulledIn()
    {
        if (plan_.pulledIn.empty()) {
            return;
        }
        Heading(Color::YELLOW, "Pulled in, though not requested:");
        for (const PulledIn& one : plan_.pulledIn) {
            session_.Print(fmt::format("  {}, needed by {}\n", Printable(one.name), Joined(one.neededBy)));
            if (!one.notAwaited.empty()) {
                session_.Print(fmt::format("      does not wait for what it depends on itself: {}\n",
                                           Joined(one.notAwaited)));
            }
        }
    }

    void PrintLeftRunning()
    {
        if (plan_.leftRunning.empty()) {
            return;
        }
        Heading(Color::YELLOW, "Left running, though what they depend on is stopped:");
        for (const LeftRunning& one : plan_.leftRunning) {
            session_.Print(fmt::format("  {}, depends on {}\n", Printable(one.name), Joined(one.dependsOn)));
        }
    }

    // Shown by "depends on" for a stop, too: that is what stands in the files.
    void PrintCycles()
    {
        if (plan_.result != PARSE_ERR_GRAPH_CYCLE) {
            return;
        }
        if (plan_.cycles.empty()) {
            Heading(Color::RED, "The library takes a missing dependency for a cycle; nothing is handed out.");
            return;
        }
        Heading(Color::RED, "Cycle: nothing is handed out.");
        for (const Cycle& cycle : plan_.cycles) {
            std::vector<std::string> way = cycle.shortest;
            if (!isStart_) {
                std::reverse(way.begin() + 1, way.end());
            }
            way.push_back(way.front());
            session_.Print(fmt::format("  {}\n", Chain(way)));
            for (std::size_t i = 0; i + 1 < way.size(); ++i) {
                PrintEdge(way[i], way[i + 1]);
            }
        }
        if (!plan_.blocked.empty()) {
            session_.Print(fmt::format("  also held up: {}\n", Joined(plan_.blocked)));
        }
    }

    static std::string Chain(const std::vector<std::string>& way)
    {
        std::string text;
        for (const std::string& name : way) {
            text += fmt::format("{}{}", text.empty() ? "" : " -> ", Printable(name));
        }
        return text;
    }

    void PrintEdge(const std::string& name, const std::string& needed)
    {
        const std::vector<std::size_t>& entries = configuration_.tree.EntriesNamed(name);
        if (entries.empty()) {
            return;
        }
        const SourceEntry& entry = configuration_.tree.Entries()[entries.back()];
        session_.Print(fmt::format("      {}: {} depends on {}\n",
                                   Printable(ToText(configuration_.tree.PositionOfDependency(entry, needed))),
                                   Printable(name), Printable(needed)));
    }

    void PrintNeverHandedOut()
    {
        if (plan_.result == PARSE_ERR_GRAPH_CYCLE || plan_.neverHandedOut.empty()) {
            return;
        }
        Heading(Color::RED, fmt::format("Stall: never {}, because a dependency of theirs is not found:",
                                        isStart_ ? "started" : "stopped"));
        for (const std::string& name : plan_.neverHandedOut) {
            session_.Print(fmt::format("  {}\n", Printable(name)));
        }
    }

    Session& session_;
    const Configuration& configuration_;
    const RequestPlan& plan_;
    bool isStart_;
    bool isFirst_;
};

} // namespace

std::string WrapNames(const Session& session, const std::string& label, const std::vector<std::string>& names)
{
    const std::size_t width = session.Width() == 0 ? kWidthWithoutTerminal : session.Width();
    const std::size_t indent = Width(label);
    std::string text = label;
    std::size_t column = indent;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name = Printable(names[i]) + (i + 1 == names.size() ? "" : ", ");
        if (column + Width(name) > width && column > indent) {
            text.erase(text.find_last_not_of(' ') + 1);
            text += "\n" + std::string(indent, ' ');
            column = indent;
        }
        text += name;
        column += Width(name);
    }
    return text + "\n";
}

void PrintRemarks(Session& session, const Configuration& configuration, const RequestPlan& plan, bool isFirst)
{
    RemarksPrinter(session, configuration, plan, isFirst).Print();
}

void AddRequestJson(Json& json, const RequestPlan& plan)
{
    json["request"] = {{"kind", plan.kind == RequestKind::START ? "start" : "stop"},
                       {"names", plan.names},
                       {"result", ResultJson(plan.result)}};
}

void AddRemarksJson(Json& json, const RequestPlan& plan)
{
    json["not_found"] = plan.notFound;
    json["pulled_in"] = Json::array();
    for (const PulledIn& one : plan.pulledIn) {
        json["pulled_in"].push_back(
            {{"name", one.name}, {"needed_by", one.neededBy}, {"not_awaited", one.notAwaited}});
    }
    json["left_running"] = Json::array();
    for (const LeftRunning& one : plan.leftRunning) {
        json["left_running"].push_back({{"name", one.name}, {"depends_on", one.dependsOn}});
    }
    json["cycles"] = Json::array();
    for (const Cycle& cycle : plan.cycles) {
        json["cycles"].push_back({{"members", cycle.members}, {"waits_for", cycle.shortest}});
    }
    json["blocked"] = plan.blocked;
    json["stalled"] = plan.neverHandedOut;
}

} // namespace tool
