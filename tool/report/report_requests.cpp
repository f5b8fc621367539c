#include "tool/report/report_requests.h"

#include <optional>
#include <utility>

#include <nlohmann/json.hpp>

#include "tool/command_line/load.h"
#include "tool/simulation/times_file.h"

namespace tool {

namespace {

ReportRequest MakeRequest(const Configuration& configuration, RequestKind kind, const TimesFile& times,
                          std::size_t jobs)
{
    ReportRequest request;
    request.plan = MakePlan(configuration, kind, AllNames(configuration));
    SimulationSettings settings;
    settings.jobs = jobs;
    const Durations others = DefaultDurations(configuration, kind, request.plan.names);
    settings.duration = [&](const std::string& name) {
        const std::optional<Milliseconds> time = times.Find(name);
        return time ? *time : others(name);
    };
    request.line = Simulate(configuration.library, kind, request.plan.names, settings);
    return request;
}

// A name that is no node is left out; there is none unless the files change while they are read.
Json Numbers(const std::vector<std::string>& names, const GraphPicture& picture)
{
    Json numbers = Json::array();
    for (const std::string& name : names) {
        const std::size_t node = picture.Find(name);
        if (node != kNone) {
            numbers.push_back(node);
        }
    }
    return numbers;
}

Json StepsJson(const TimeLine& line, const GraphPicture& picture)
{
    Json steps = Json::array();
    for (const Step& step : line.steps) {
        const std::size_t node = picture.Find(step.name);
        if (node == kNone) {
            continue;
        }
        for (const std::uint64_t number : {static_cast<std::uint64_t>(node), step.start, step.end, step.slack,
                                           static_cast<std::uint64_t>(step.isCritical ? 1 : 0)}) {
            steps.push_back(number);
        }
    }
    return steps;
}

} // namespace

ReportRequests MakeReportRequests(const Configuration& configuration, const std::string& timesFile,
                                  std::size_t jobs)
{
    const TimesFile times = timesFile.empty() ? TimesFile() : TimesFile::Read(timesFile);
    return {MakeRequest(configuration, RequestKind::START, times, jobs),
            MakeRequest(configuration, RequestKind::STOP, times, jobs), timesFile};
}

Json RequestJson(const ReportRequest& request, const GraphPicture& picture)
{
    Json json{{"result", ResultJson(request.plan.result)}};
    Json& rounds = json["rounds"] = Json::array();
    for (const std::vector<std::string>& round : request.plan.rounds) {
        rounds.push_back(Numbers(round, picture));
    }
    Json& cycles = json["cycles"] = Json::array();
    for (const Cycle& cycle : request.plan.cycles) {
        cycles.push_back(Numbers(cycle.shortest, picture));
    }
    json["blocked"] = Numbers(request.plan.blocked, picture);
    json["stalled"] = Numbers(request.plan.neverHandedOut, picture);
    json["makespan"] = request.line.makespan;
    json["steps"] = StepsJson(request.line, picture);
    return json;
}

} // namespace tool
