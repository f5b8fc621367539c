#include <algorithm>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "startplan/result_codes.h"
#include "tool/command.h"
#include "tool/load.h"
#include "tool/printable.h"
#include "tool/request_plan.h"
#include "tool/result_names.h"
#include "tool/suggest.h"

namespace tool {

namespace {

constexpr std::size_t kWidthWithoutTerminal = 100;

std::string Quoted(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += fmt::format("{}{}", text.empty() ? "" : ", ", Printable(name));
    }
    return text;
}

class PlanPrinter {
public:
    PlanPrinter(Session& session, const Configuration& configuration, const RequestPlan& plan)
        : session_(session), configuration_(configuration), plan_(plan),
          isStart_(plan.kind == RequestKind::START)
    {}

    void Print()
    {
        PrintRounds();
        PrintNotFound();
        PrintPulledIn();
        PrintLeftRunning();
        PrintCycles();
        PrintNeverHandedOut();
        if (!session_.Options().isQuiet) {
            PrintClosingLine();
        }
    }

private:
    void Heading(Color color, const std::string& text)
    {
        session_.Print(plan_.rounds.empty() && isFirstHeading_ ? "" : "\n");
        session_.Print(session_.In(color, text) + "\n");
        isFirstHeading_ = false;
    }

    void PrintRounds()
    {
        const std::size_t width = session_.Width() == 0 ? kWidthWithoutTerminal : session_.Width();
        const std::size_t digits = std::to_string(plan_.rounds.size()).size();
        for (std::size_t i = 0; i < plan_.rounds.size(); ++i) {
            const std::string label = fmt::format("round {:>{}}  ", i + 1, digits);
            std::string line = label;
            std::size_t column = label.size();
            for (std::size_t j = 0; j < plan_.rounds[i].size(); ++j) {
                const bool isLast = j + 1 == plan_.rounds[i].size();
                const std::string name = Printable(plan_.rounds[i][j]) + (isLast ? "" : ", ");
                if (column + tool::Width(name) > width && column > label.size()) {
                    line.erase(line.find_last_not_of(' ') + 1);
                    line += "\n" + std::string(label.size(), ' ');
                    column = label.size();
                }
                line += name;
                column += tool::Width(name);
            }
            session_.Print(line + "\n");
        }
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
            session_.Print(fmt::format("  {}, needed by {}\n", Printable(one.name), Quoted(one.neededBy)));
            if (!one.notAwaited.empty()) {
                session_.Print(fmt::format("      does not wait for what it depends on itself: {}\n",
                                           Quoted(one.notAwaited)));
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
            session_.Print(fmt::format("  {}, depends on {}\n", Printable(one.name), Quoted(one.dependsOn)));
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
            session_.Print(fmt::format("  also held up: {}\n", Quoted(plan_.blocked)));
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

    void PrintClosingLine()
    {
        std::size_t count = 0;
        for (const std::vector<std::string>& round : plan_.rounds) {
            count += round.size();
        }
        const std::string result =
            plan_.result == 0 ? std::string() : fmt::format("; result {}", ResultText(plan_.result));
        session_.Print(fmt::format("\n{} requested, {} {} in {} {}{}\n", plan_.names.size(), count,
                                   isStart_ ? "started" : "stopped", plan_.rounds.size(),
                                   plan_.rounds.size() == 1 ? "round" : "rounds", result));
    }

    Session& session_;
    const Configuration& configuration_;
    const RequestPlan& plan_;
    bool isStart_;
    bool isFirstHeading_ = true;
};

Json PlanJson(const Configuration& configuration, const RequestPlan& plan)
{
    Json json = ConfigurationJson("plan", configuration);
    json["request"] = {{"kind", plan.kind == RequestKind::START ? "start" : "stop"},
                       {"names", plan.names},
                       {"result", ResultJson(plan.result)}};
    json["rounds"] = plan.rounds;
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
    return json;
}

class PlanCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        app.add_flag("--all", isAll_, "Request every application whose name is no pattern")->group("Options");
        app.add_flag("--closure", isClosure_,
                     "Request also all that the names need (start) or that needs them (stop)")
            ->group("Options");
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const RequestKind kind = TakeRequestKind(words);
        const std::string top = TakeTop(session.Options(), words);
        if (isAll_ != words.empty()) {
            throw UsageFailure(isAll_ ? "either names or --all, not both"
                                      : "which applications? Name some, or --all");
        }
        const Configuration configuration = LoadForWork(session, top);
        std::vector<std::string> names = isAll_ ? AllNames(configuration) : words;
        if (isClosure_) {
            names = Closure(configuration, kind, names);
        }
        const RequestPlan plan = MakePlan(configuration, kind, std::move(names));
        session.Show(plan.lines);
        if (session.IsJson()) {
            session.PrintJson(PlanJson(configuration, plan));
        } else {
            PlanPrinter(session, configuration, plan).Print();
        }
        return plan.result != 0 || !plan.neverHandedOut.empty() ? EXIT_FINDINGS : StatusOf(configuration);
    }

private:
    bool isAll_ = false;
    bool isClosure_ = false;
};

constexpr char kHelp[] =
    "The rounds in which the library hands a request out: each holds what may be started, or stopped, once\n"
    "everything in the rounds before is done. Names are served as on the device, patterns included.\n"
    "A start pulls in what the named ones depend on, but one level deep only; a stop leaves dependants that\n"
    "are not named running. --closure makes the request whole.\n\n"
    "Exit status: 0 done, 1 a name is not found, a cycle, a stall, or the library's result is not 0, 2 the\n"
    "work could not be done.\n"
    "Example: startplan plan start top.yaml --all";

const CommandEntry kEntry({"plan",
                           "start|stop TOP NAME...|--all",
                           "The rounds in which a request is handed out",
                           kHelp,
                           Section::REQUESTS,
                           {"text", "json"},
                           []() -> std::unique_ptr<Command> { return std::make_unique<PlanCommand>(); }});

} // namespace

} // namespace tool
