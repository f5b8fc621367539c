#include "tool/simulation/time_line_svg.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>

#include "tool/text/printable.h"
#include "tool/text/xml_text.h"

namespace tool {

namespace {

constexpr double kLetterWidth = 7.3; // of the monospaced font at 12 pixels, with something to spare
constexpr double kRow = 18;
constexpr double kTop = 58; // title, legend and the axis' numbers
constexpr double kEdge = 12;
constexpr double kBarsWidth = 640;
constexpr std::size_t kMostLetters = 40;

constexpr const char* kStyle = R"(<style>
  text { font: 12px ui-monospace, "DejaVu Sans Mono", monospace; fill: #1b1f24 }
  .title { font-weight: bold }
  .back { fill: #ffffff }
  .grid { stroke: #d6dbe1 }
  .number, .legend { fill: #57606a }
  .step { fill: #7ba4db; stroke: #4a6fa5 }
  .critical { fill: #ea7a3c; stroke: #c2410c }
  .failed { fill: #b00020; stroke: #7d0016 }
  .slack { stroke: #4a6fa5; stroke-dasharray: 2 3 }
  .wait { fill: none; stroke: #8a94a3; stroke-dasharray: 3 2 }
  @media (prefers-color-scheme: dark) {
    text { fill: #e6edf3 }
    .back { fill: #0d1117 }
    .grid { stroke: #2b323b }
    .number, .legend { fill: #9da7b3 }
    .step { fill: #31517f; stroke: #7aa2d9 }
    .critical { fill: #a8471a; stroke: #ff9a5c }
    .failed { fill: #8f1026; stroke: #ff6b81 }
    .slack { stroke: #7aa2d9 }
  }
</style>
)";

// A step of 1, 2 or 5 times a power of ten, so that at most ten of them fit.
Milliseconds TickStep(Milliseconds makespan)
{
    for (Milliseconds power = 1;; power *= 10) {
        for (const Milliseconds factor : {1U, 2U, 5U}) {
            if (makespan / (power * factor) <= 10) {
                return power * factor;
            }
        }
    }
}

std::string TimeText(Milliseconds time, Milliseconds tick)
{
    if (tick < 1000) {
        return fmt::format("{} ms", time);
    }
    return fmt::format("{} s", time / 1000);
}

const char* ClassOf(const Step& step)
{
    if (step.isFailed) {
        return "failed";
    }
    return step.isCritical ? "critical" : "step";
}

class Picture {
public:
    Picture(const TimeLine& line, const std::string& title) : line_(line), title_(title)
    {
        std::size_t letters = 8;
        for (const Step& step : line.steps) {
            letters = std::max(letters, std::min(kMostLetters, Width(Printable(step.name))));
        }
        left_ = 2 * kEdge + kLetterWidth * static_cast<double>(letters);
    }

    std::string Markup() const
    {
        const double width = left_ + kBarsWidth + 4 * kEdge;
        const double height = Y(line_.steps.size()) + kEdge;
        std::string text = fmt::format(
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" height=\"{1:.0f}\" "
            "viewBox=\"0 0 {0:.0f} {1:.0f}\" role=\"img\">\n<title>{2}</title>\n{3}"
            "<rect class=\"back\" width=\"100%\" height=\"100%\"/>\n"
            "<text class=\"title\" x=\"{4:.0f}\" y=\"18\">{2}</text>\n"
            "<text class=\"legend\" x=\"{4:.0f}\" y=\"35\">orange: critical path; dotted: slack; dashed: "
            "waits for a job; red: never done</text>\n",
            width, height, XmlText(title_), kStyle, kEdge);
        text += Axis();
        for (std::size_t row = 0; row < line_.steps.size(); ++row) {
            text += Row(row);
        }
        return text + "</svg>\n";
    }

private:
    double X(Milliseconds time) const
    {
        const auto makespan = static_cast<double>(std::max<Milliseconds>(line_.makespan, 1));
        return left_ + kBarsWidth * static_cast<double>(time) / makespan;
    }

    static double Y(std::size_t row) { return kTop + kRow * static_cast<double>(row); }

    std::string Axis() const
    {
        const Milliseconds tick = TickStep(line_.makespan);
        std::string text;
        for (Milliseconds time = 0; time <= line_.makespan; time += tick) {
            text +=
                fmt::format("<line class=\"grid\" x1=\"{0:.1f}\" y1=\"{1:.0f}\" x2=\"{0:.1f}\" "
                            "y2=\"{2:.0f}\"/><text class=\"number\" x=\"{0:.1f}\" y=\"{3:.0f}\">{4}</text>\n",
                            X(time), kTop, Y(line_.steps.size()), kTop - 5, TimeText(time, tick));
        }
        return text;
    }

    std::string Row(std::size_t row) const
    {
        const Step& step = line_.steps[row];
        const double top = Y(row) + 3;
        const double middle = Y(row) + kRow / 2;
        const double bar = std::max(1.5, X(step.end) - X(step.start));
        std::string text = fmt::format(
            "<g><title>{0}: {1} to {2} ms, slack {3} ms</title><text x=\"{4:.1f}\" y=\"{5:.1f}\">{6}</text>",
            XmlText(step.name), step.start, step.end, step.slack, kEdge, Y(row) + 13,
            XmlText(CutFront(Printable(step.name), kMostLetters)));
        if (step.start > step.ready) {
            text +=
                fmt::format("<rect class=\"wait\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"12\"/>",
                            X(step.ready), top, X(step.start) - X(step.ready));
        }
        if (step.slack > 0) {
            text += fmt::format(
                "<line class=\"slack\" x1=\"{0:.1f}\" y1=\"{2:.1f}\" x2=\"{1:.1f}\" y2=\"{2:.1f}\"/>",
                X(step.end), X(step.end + step.slack), middle);
        }
        return text +
               fmt::format("<rect class=\"{}\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"12\" "
                           "rx=\"2\"/></g>\n",
                           ClassOf(step), X(step.start), top, bar);
    }

    const TimeLine& line_;
    const std::string& title_;
    double left_ = 0;
};

} // namespace

std::string TimeLineSvg(const TimeLine& line, const std::string& title)
{
    return Picture(line, title).Markup();
}

} // namespace tool
