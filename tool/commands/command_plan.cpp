#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/command_line/plan_remarks.h"
#include "tool/command_line/request_options.h"
#include "tool/library/result_names.h"
#include "tool/plan/request_plan.h"

namespace tool {

namespace {

void PrintRounds(Session& session, const RequestPlan& plan)
{
    const std::size_t digits = std::to_string(plan.rounds.size()).size();
    for (std::size_t i = 0; i < plan.rounds.size(); ++i) {
        session.Print(WrapNames(session, fmt::format("round {:>{}}  ", i + 1, digits), plan.rounds[i]));
    }
}

void PrintClosingLine(Session& session, const RequestPlan& plan)
{
    std::size_t count = 0;
    for (const std::vector<std::string>& round : plan.rounds) {
        count += round.size();
    }
    const std::string result =
        plan.result == 0 ? std::string() : fmt::format("; result {}", ResultText(plan.result));
    session.Print(fmt::format("\n{} requested, {} {} in {} {}{}\n", plan.names.size(), count,
                              plan.kind == RequestKind::START ? "started" : "stopped", plan.rounds.size(),
                              plan.rounds.size() == 1 ? "round" : "rounds", result));
}

class PlanCommand : public Command {
public:
    void Define(CLI::App& app) override { request_.Define(app); }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const RequestKind kind = TakeRequestKind(words);
        const std::string top = TakeTop(session.Options(), words);
        request_.Check(words);
        const Configuration configuration = LoadForWork(session, top);
        const RequestPlan plan =
            MakePlan(configuration, kind, request_.Names(configuration, kind, std::move(words)));
        session.Show(plan.lines);
        if (session.IsJson()) {
            Json json = ConfigurationJson("plan", configuration);
            AddRequestJson(json, plan);
            json["rounds"] = plan.rounds;
            AddRemarksJson(json, plan);
            session.PrintJson(json);
        } else {
            PrintRounds(session, plan);
            PrintRemarks(session, configuration, plan, plan.rounds.empty());
            if (!session.Options().isQuiet) {
                PrintClosingLine(session, plan);
            }
        }
        return plan.result != 0 || !plan.neverHandedOut.empty() ? EXIT_FINDINGS : StatusOf(configuration);
    }

private:
    RequestOptions request_;
};

constexpr Description kPlanHelp = {
    "The rounds in which the library hands a request out: each holds what may be started, or stopped, once\n"
    "everything in the rounds before is done. Names are served as on the device, patterns included.\n"
    "A start pulls in what the named ones depend on, but one level deep only; a stop leaves dependants that\n"
    "are not named running. --closure makes the request whole.",
    "0 done, 1 a name is not found, a cycle, a stall, or the library's result is not 0, 2 the\n"
    "work could not be done.",
    "startplan plan start top.yaml --all",
    "",
    "One application, and all that it needs:\n\n"
    "    startplan plan start --closure -r replace.yaml top.yaml clock_sync\n\n"
    "Every member of a family:\n\n"
    "    startplan plan start top.yaml $(startplan expand 'can_gateway_<0-2>')",
};

const CommandEntry kPlanEntry({"plan",
                               "start|stop TOP NAME...|--all",
                               "The rounds in which a request is handed out",
                               kPlanHelp,
                               Section::REQUESTS,
                               {"text", "json"},
                               []() -> std::unique_ptr<Command> { return std::make_unique<PlanCommand>(); }});

} // namespace

} // namespace tool
