#include "tool/command_line/session.h"

#include <cstdlib>

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sys/ioctl.h>
#include <unistd.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

bool WantsColor(const CommonOptions& options)
{
    if (options.color != "auto") {
        return options.color == "always";
    }
    const char* noColor = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool isDumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return options.output.empty() && isatty(STDOUT_FILENO) == 1 && !isDumb &&
           (noColor == nullptr || *noColor == '\0');
}

std::size_t TerminalWidth(const CommonOptions& options)
{
    winsize size = {};
    if (!options.output.empty() || isatty(STDOUT_FILENO) != 1 ||
        ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) {
        return 0;
    }
    return size.ws_col;
}

// Nobody can be told when standard error itself is gone.
void Say(const std::string& text)
{
    WriteAll(STDERR_FILENO, text);
}

} // namespace

Session::Session(const CommonOptions& options)
    : options_(options), output_(options.output), hasColor_(WantsColor(options)),
      width_(TerminalWidth(options))
{}

void Session::PrintJson(const Json& json)
{
    output_.Add(json.dump(2, ' ', false, Json::error_handler_t::replace));
    output_.Add("\n");
}

void Session::Error(std::string_view text) const
{
    Say(fmt::format("startplan: error: {}\n", text));
}

void Session::Warn(std::string_view text) const
{
    if (!options_.isQuiet) {
        Say(fmt::format("startplan: warning: {}\n", text));
    }
}

void Session::Note(std::string_view text) const
{
    if (!options_.isQuiet) {
        Say(fmt::format("startplan: note: {}\n", text));
    }
}

void Session::Show(const LogLines& lines) const
{
    if (!options_.isVerbose) {
        return;
    }
    std::string text;
    for (const LogLine& line : lines) {
        text += fmt::format("{:<11} {}\n", PriorityName(line.priority), Printable(line.text));
    }
    Say(text);
}

std::string Session::In(Color color, std::string_view text) const
{
    if (!hasColor_) {
        return std::string(text);
    }
    const char* codes[] = {"1", "31", "33", "32", "2"};
    return fmt::format("\x1B[{}m{}\x1B[0m", codes[static_cast<std::size_t>(color)], text);
}

Json JsonDocument(std::string_view command)
{
    return Json{{"format", fmt::format("startplan-{}", command)}, {"version", 1}};
}

} // namespace tool
