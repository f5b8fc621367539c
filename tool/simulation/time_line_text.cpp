#include "tool/simulation/time_line_text.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/text_table.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kWidthWithoutTerminal = 100;
constexpr std::size_t kLeastBar = 20;
constexpr std::size_t kMostBar = 80;

// Where the bars of a time line begin and end, in columns.
class Scale {
public:
    Scale(std::size_t columns, Milliseconds makespan)
        : columns_(columns), makespan_(std::max<Milliseconds>(makespan, 1))
    {}

    std::size_t At(Milliseconds time) const
    {
        return std::min(columns_, static_cast<std::size_t>(time * columns_ / makespan_));
    }

private:
    std::size_t columns_;
    Milliseconds makespan_;
};

// Every bar shows, however short it is.
std::string BarOf(const Step& step, const Scale& scale, std::size_t columns)
{
    const char mark = step.isFailed ? 'x' : (step.isCritical ? '#' : '=');
    const std::size_t start = std::min(scale.At(step.start), columns - 1);
    const std::size_t end = std::max(start + 1, scale.At(step.end));
    std::string bar(columns, ' ');
    std::fill(bar.begin() + static_cast<std::ptrdiff_t>(std::min(scale.At(step.ready), start)),
              bar.begin() + static_cast<std::ptrdiff_t>(start), '-');
    std::fill(bar.begin() + static_cast<std::ptrdiff_t>(start),
              bar.begin() + static_cast<std::ptrdiff_t>(end), mark);
    const std::size_t latest = std::max(end, scale.At(step.end + step.slack));
    std::fill(bar.begin() + static_cast<std::ptrdiff_t>(end),
              bar.begin() + static_cast<std::ptrdiff_t>(latest), '.');
    return "|" + bar + "|";
}

std::size_t BarColumns(const Session& session, const TimeLine& line)
{
    std::size_t name = 4;
    for (const Step& step : line.steps) {
        name = std::max(name, Width(Printable(step.name)));
    }
    const std::size_t number = std::max<std::size_t>(8, std::to_string(line.makespan).size());
    const std::size_t others = name + 3 * (number + 2) + 4;
    const std::size_t width = session.Width() == 0 ? kWidthWithoutTerminal : session.Width();
    return std::clamp(width - std::min(width, others), kLeastBar, kMostBar);
}

} // namespace

std::string TimeLineTable(const Session& session, const TimeLine& line)
{
    TextTable table;
    table.AddColumn("NAME");
    table.AddColumn("START MS", Align::RIGHT);
    table.AddColumn("END MS", Align::RIGHT);
    table.AddColumn("SLACK MS", Align::RIGHT);
    table.AddColumn("TIME LINE");
    const std::size_t columns = BarColumns(session, line);
    const Scale scale(columns, line.makespan);
    for (const Step& step : line.steps) {
        table.AddRow({step.name, std::to_string(step.start), std::to_string(step.end),
                      std::to_string(step.slack), BarOf(step, scale, columns)});
    }
    return table.Render(session);
}

std::string CriticalPathText(const TimeLine& line)
{
    const std::size_t digits = std::to_string(line.makespan).size();
    std::string text;
    for (const std::size_t number : line.critical) {
        const Step& step = line.steps[number];
        text += fmt::format("  {:>{}} ms  {}, {} ms", step.start, digits, Printable(step.name),
                            step.end - step.start);
        if (step.isHeldByJob) {
            text += fmt::format(", ready at {} ms, waits for the job of {}", step.ready,
                                Printable(line.steps[step.heldBy].name));
        }
        text += "\n";
    }
    return text;
}

void AddTimeLineJson(Json& json, const TimeLine& line)
{
    json["makespan"] = line.makespan;
    json["most_at_a_time"] = line.mostAtATime;
    json["steps"] = Json::array();
    for (const Step& step : line.steps) {
        Json one{{"name", step.name},      {"ready", step.ready}, {"start", step.start},
                 {"end", step.end},        {"slack", step.slack}, {"critical", step.isCritical},
                 {"failed", step.isFailed}};
        if (step.heldBy != kNone) {
            one["held_by"] = line.steps[step.heldBy].name;
            one["held_by_job"] = step.isHeldByJob;
        }
        json["steps"].push_back(std::move(one));
    }
    json["critical_path"] = Json::array();
    for (const std::size_t number : line.critical) {
        json["critical_path"].push_back(line.steps[number].name);
    }
    json["never_handed_out"] = line.neverHandedOut;
}

} // namespace tool
