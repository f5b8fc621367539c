#include <cstdint>
#include <string>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/check/check.h"
#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/report/report_data.h"
#include "tool/report/report_page.h"
#include "tool/report/report_requests.h"

namespace tool {

namespace {

class ReportCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        app.add_option("--times", times_, "YAML file of names or patterns to milliseconds, for the time line")
            ->type_name("FILE")
            ->allow_extra_args(false)
            ->group("Options");
        app.add_option_function<std::uint32_t>(
               "--jobs",
               [this](std::uint32_t jobs) {
                   if (jobs == 0) {
                       throw UsageFailure("--jobs 0: write a number from 1");
                   }
                   jobs_ = jobs;
               },
               "At most so many at a time in the time line; any number without this")
            ->type_name("N")
            ->allow_extra_args(false)
            ->group("Options");
        app.add_option("--title", title_, "The page's title, instead of the top-level file's path")
            ->type_name("TEXT")
            ->allow_extra_args(false)
            ->group("Options");
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        RefuseWords(words);
        const Configuration configuration = LoadForWork(session, top);
        const CheckResult result = Check(configuration, {}, RuleLevels());
        const ReportRequests requests = MakeReportRequests(configuration, times_, jobs_);
        session.Print(ReportPage(title_.empty() ? top : title_, ReportData(result, requests)));
        const bool isBad = result.Count(Level::ERROR) + result.Count(Level::WARNING) != 0 ||
                           requests.start.plan.result != 0 || requests.stop.plan.result != 0;
        return isBad ? EXIT_FINDINGS : StatusOf(configuration);
    }

private:
    std::string times_;
    std::uint32_t jobs_ = 0;
    std::string title_;
};

constexpr Description kReportHelp = {
    "One page for a browser, with everything in it and without any need of a network: what check finds, "
    "every\n"
    "setting of every application in a table to search and sort, the graph to pan, zoom and search, the\n"
    "rounds in which all applications start and stop, and their time line, with the durations that simulate\n"
    "takes.",
    "0 done, 1 the page shows a warning, an error or a cycle, or the library's result is not 0,\n"
    "2 the work could not be done. The page is written for 0 and 1.",
    "startplan report -o report.html top.yaml",
    "",
    "With durations that were measured, and a title:\n\n"
    "    startplan report --times times.yaml --title Vehicle -o report.html top.yaml",
};

const CommandEntry
    kReportEntry({"report",
                  "[TOP]",
                  "All about a configuration, as one page for a browser",
                  kReportHelp,
                  Section::LOOK,
                  {"html"},
                  []() -> std::unique_ptr<Command> { return std::make_unique<ReportCommand>(); }});

} // namespace

} // namespace tool
