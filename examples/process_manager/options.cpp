#include "options.h"

#include <charconv>
#include <cstdint>
#include <iostream>
#include <string_view>

namespace {

constexpr const char* kUsage =
    R"(usage: process_manager [OPTION]... TOP --all
       process_manager [OPTION]... TOP --start NAME...

Starts the programs of the configuration at TOP in the order of their dependencies, supervises them, and stops
them in reverse order on SIGTERM or SIGINT. --all starts every application that is no pattern.

  --replace FILE         replace data for the paths of startup files
  --control PIPE         obey the lines "start NAME..." and "stop NAME..." of this named pipe
  --ready-time-out MS    report a program that is not ready by then (10000)
  --restarts COUNT       restarts allowed to one application ... (5)
  --restart-window MS    ... within this time (10000)

Exit status: 0 all was started and all was stopped, 1 something was not, 2 the work could not begin.
)";

// 1 to 2147483647.
bool ReadCount(std::string_view text, std::int32_t& count)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc() && end == text.data() + text.size() && count > 0;
}

bool SetOption(std::string_view option, const std::string& value, Options& options)
{
    if (option == "--replace") {
        options.replacePath = value;
        return true;
    }
    if (option == "--control") {
        options.controlPath = value;
        return true;
    }
    std::int32_t count = 0;
    if (!ReadCount(value, count)) {
        return false;
    }
    if (option == "--ready-time-out") {
        options.limits.readyTimeOut = std::chrono::milliseconds(count);
        return true;
    }
    if (option == "--restarts") {
        options.limits.restarts = static_cast<std::size_t>(count);
        return true;
    }
    options.limits.restartWindow = std::chrono::milliseconds(count);
    return option == "--restart-window";
}

bool Parse(const std::vector<std::string>& arguments, Options& options)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--all") {
            options.all = true;
            continue;
        }
        if (argument == "--start") { // takes the names up to the next option
            while (i + 1 < arguments.size() && arguments[i + 1].compare(0, 2, "--") != 0) {
                options.names.push_back(arguments[++i]);
            }
            continue;
        }
        if (argument.compare(0, 2, "--") != 0 && options.topPath.empty()) {
            options.topPath = argument;
            continue;
        }
        if (i + 1 == arguments.size() || !SetOption(argument, arguments[++i], options)) {
            return false;
        }
    }
    return !options.topPath.empty() && options.all == options.names.empty();
}

} // namespace

std::optional<Options> ParseOptions(int argc, char** argv)
{
    Options options;
    if (Parse({argv + 1, argv + argc}, options)) {
        return options;
    }
    std::cerr << kUsage;
    return std::nullopt;
}
