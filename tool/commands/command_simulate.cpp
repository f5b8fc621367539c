#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <set>
#include <utility>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "startplan/depend_graph.h"
#include "startplan/result_codes.h"
#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/command_line/plan_remarks.h"
#include "tool/command_line/request_options.h"
#include "tool/library/result_names.h"
#include "tool/plan/request_plan.h"
#include "tool/simulation/simulation.h"
#include "tool/simulation/time_line_svg.h"
#include "tool/simulation/time_line_text.h"
#include "tool/simulation/times_file.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

constexpr std::size_t kMostWarnings = 10;

// The options of the simulation as written, and what they come to.
struct SimulateOptions {
    std::string timesFile;
    std::string defaultTime;
    std::string jobs;
    std::vector<std::string> failing;

    void Define(CLI::App& app)
    {
        const auto text = [&app](const char* name, std::string& into, const char* type, const char* help) {
            app.add_option(name, into, help)
                ->type_name(type)
                ->allow_extra_args(false)
                ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
                ->group("Options");
        };
        text("--times", timesFile, "FILE", "YAML file of names or patterns to milliseconds");
        text("--default-time", defaultTime, "MS",
             "Milliseconds for all others, instead of 100, or term_time_out");
        text("--jobs", jobs, "N", "At most so many at a time; any number without this");
        app.add_option("--fail", failing, "This one is never done; may be repeated")
            ->type_name("NAME")
            ->type_size(1)
            ->allow_extra_args(false)
            ->group("Options");
    }

    std::optional<Milliseconds> DefaultTime() const
    {
        const auto time = ReadMilliseconds(defaultTime);
        if (!time && !defaultTime.empty()) {
            throw UsageFailure(fmt::format("--default-time {}: write whole milliseconds up to {}",
                                           defaultTime, std::numeric_limits<std::uint32_t>::max()));
        }
        return time;
    }

    std::size_t Jobs() const
    {
        const auto number = ReadMilliseconds(jobs); // a whole number like any other
        if (jobs.empty()) {
            return 0;
        }
        if (!number || *number == 0) {
            throw UsageFailure(fmt::format("--jobs {}: write a number from 1", jobs));
        }
        return static_cast<std::size_t>(*number);
    }
};

// A name in the times file that nothing is called by is a typing error most of the time.
void WarnOfUnknownTimes(const Session& session, const Configuration& configuration, const TimesFile& times,
                        const TimeLine& line)
{
    std::set<std::string> known(line.neverHandedOut.begin(), line.neverHandedOut.end());
    for (const Step& step : line.steps) {
        known.insert(step.name);
    }
    std::vector<std::string> names;
    for (const auto& [name, app] : configuration.appByName) {
        names.push_back(name);
        known.insert(name);
    }
    std::size_t count = 0;
    for (const TimesFile::Entry& entry : times.Entries()) {
        if (entry.isPattern || known.count(entry.name) != 0) {
            continue;
        }
        if (++count <= kMostWarnings) {
            session.Warn(fmt::format("{}: no application \"{}\"{}", Printable(ToText(entry.position)),
                                     Printable(entry.name), DidYouMean(entry.name, names)));
        }
    }
    if (count > kMostWarnings) {
        session.Warn(fmt::format("{}: {} more names that no application has",
                                 Printable(times.Entries().front().position.file), count - kMostWarnings));
    }
}

// Those of the never handed out that no failure holds up.
std::vector<std::string> Stalled(const GraphView& waits, const TimeLine& line,
                                 const std::set<std::string>& failing)
{
    std::set<std::string> heldUp;
    for (const std::string& name : failing) {
        const std::size_t vertex = waits.Find(name);
        if (vertex == kNone) {
            continue;
        }
        const Ways ways = FindWays(waits.neededBy, static_cast<Vertex>(vertex));
        for (Vertex other = 0; other < waits.Size(); ++other) {
            if (ways.Reaches(other)) {
                heldUp.insert(waits.names[other]);
            }
        }
    }
    std::vector<std::string> stalled;
    std::set_difference(line.neverHandedOut.begin(), line.neverHandedOut.end(), heldUp.begin(), heldUp.end(),
                        std::back_inserter(stalled));
    return stalled;
}

class SimulateCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        request_.Define(app);
        options_.Define(app);
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const RequestKind kind = TakeRequestKind(words);
        const std::string top = TakeTop(session.Options(), words);
        request_.Check(words);
        const std::optional<Milliseconds> defaultTime = options_.DefaultTime();
        SimulationSettings settings;
        settings.jobs = options_.Jobs();
        settings.failing = {options_.failing.begin(), options_.failing.end()};
        const TimesFile times =
            options_.timesFile.empty() ? TimesFile() : TimesFile::Read(options_.timesFile);
        const Configuration configuration = LoadForWork(session, top);
        DependGraph graph;
        RequestPlan plan =
            FillPlan(configuration, kind, request_.Names(configuration, kind, std::move(words)), graph);
        session.Show(plan.lines);
        const Durations others = DefaultDurations(configuration, kind, plan.names);
        settings.duration = [&](const std::string& name) {
            return times.Find(name).value_or(defaultTime ? *defaultTime : others(name));
        };
        TimeLine line;
        if (plan.result != PARSE_ERR_GRAPH_CYCLE) {
            const GraphView waits = ViewOf(RequestWaits(configuration.library, kind, plan.names));
            line = RunTimeLine(graph, waits, settings);
            plan.neverHandedOut = Stalled(waits, line, settings.failing);
        }
        WarnOfUnknownTimes(session, configuration, times, line);
        if (!line.steps.empty() && !AreInRequest(session, line)) {
            return EXIT_FINDINGS;
        }
        Show(session, configuration, plan, line);
        const bool isWhole = plan.result == 0 && line.neverHandedOut.empty();
        return isWhole ? StatusOf(configuration) : EXIT_FINDINGS;
    }

private:
    // What cannot fail would make a picture of nothing.
    bool AreInRequest(const Session& session, const TimeLine& line) const
    {
        std::vector<std::string> names = line.neverHandedOut;
        for (const Step& step : line.steps) {
            names.push_back(step.name);
        }
        bool areAll = true;
        for (const std::string& name : options_.failing) {
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                session.Error(
                    fmt::format("--fail {}: not in the request{}", Printable(name), DidYouMean(name, names)));
                areAll = false;
            }
        }
        return areAll;
    }

    void Show(Session& session, const Configuration& configuration, const RequestPlan& plan,
              const TimeLine& line) const
    {
        if (session.IsJson()) {
            Json json = ConfigurationJson("simulate", configuration);
            AddRequestJson(json, plan);
            AddRemarksJson(json, plan);
            json["jobs"] = options_.Jobs() == 0 ? Json(nullptr) : Json(options_.Jobs());
            json["failing"] = options_.failing;
            AddTimeLineJson(json, line);
            session.PrintJson(json);
            return;
        }
        if (session.Options().format == "svg") {
            if (line.steps.empty()) {
                session.Error("nothing is handed out, so the picture is empty");
            }
            session.Print(TimeLineSvg(line, Summary(plan, line)));
            return;
        }
        if (!line.steps.empty()) {
            session.Print(TimeLineTable(session, line));
            session.Print("\n" + session.In(Color::BOLD, "Critical path:") + "\n" + CriticalPathText(line));
        }
        ShowHeldBack(session, plan, line);
        PrintRemarks(session, configuration, plan, line.steps.empty());
        if (!session.Options().isQuiet) {
            session.Print("\n" + Summary(plan, line) + "\n");
        }
    }

    static void ShowHeldBack(Session& session, const RequestPlan& plan, const TimeLine& line)
    {
        std::vector<std::string> names;
        std::set_difference(line.neverHandedOut.begin(), line.neverHandedOut.end(),
                            plan.neverHandedOut.begin(), plan.neverHandedOut.end(),
                            std::back_inserter(names));
        if (!names.empty()) {
            const char* done = plan.kind == RequestKind::START ? "started" : "stopped";
            session.Print("\n" +
                          session.In(Color::RED, fmt::format("Never {} because of that failure:", done)) +
                          "\n" + WrapNames(session, "  ", names));
        }
    }

    static std::string Summary(const RequestPlan& plan, const TimeLine& line)
    {
        const char* done = plan.kind == RequestKind::START ? "started" : "stopped";
        const auto failed = std::count_if(line.steps.begin(), line.steps.end(),
                                          [](const Step& step) { return step.isFailed; });
        std::string text = fmt::format("{} requested, nothing {}", plan.names.size(), done);
        if (!line.steps.empty()) {
            text = fmt::format("{} requested, {} {} in {} ms, at most {} at a time", plan.names.size(),
                               line.steps.size() - static_cast<std::size_t>(failed), done, line.makespan,
                               line.mostAtATime);
        }
        if (failed != 0) {
            text += fmt::format(", {} failed", failed);
        }
        return plan.result == 0 ? text : text + fmt::format("; result {}", ResultText(plan.result));
    }

    RequestOptions request_;
    SimulateOptions options_;
};

constexpr Description kSimulateHelp = {
    "When each application starts, or stops, if every one takes the time that is told: the library hands\n"
    "them out, and what it has handed out is done when its time is over. Shows who holds up the end (the\n"
    "critical path) and how much longer each of the others could take (its slack).\n\n"
    "Times come from the file of --times, else from --default-time. Without these a start takes 100 ms, and "
    "a\n"
    "stop the application's term_time_out: the worst case. A file of times is YAML:\n\n"
    "  message_bus: 250\n"
    "  \"camera_<0-3>\": 1200\n\n"
    "An exact name goes before a pattern, an earlier pattern before a later one.\n\n"
    "In the time line # is the critical path, = any other step, . slack, - waiting for a job, and x a step\n"
    "that is never done.",
    "0 done, 1 somebody never starts, or what \"plan\" ends with 1 for, 2 the work could not be\n"
    "done.",
    "startplan simulate start top.yaml --all --jobs 4 --fail message_bus",
    "",
    "The worst case of a stop:\n\n"
    "    startplan simulate stop -r replace.yaml top.yaml --all\n\n"
    "A picture of the start, with durations that were measured:\n\n"
    "    startplan simulate start --times times.yaml -f svg -o start.svg top.yaml --all",
};

const CommandEntry
    kSimulateEntry({"simulate",
                    "start|stop TOP NAME...|--all",
                    "How long a request takes, and what holds it up",
                    kSimulateHelp,
                    Section::REQUESTS,
                    {"text", "json", "svg"},
                    []() -> std::unique_ptr<Command> { return std::make_unique<SimulateCommand>(); }});

} // namespace

} // namespace tool
