#include "tool/command_line/options.h"

#include <algorithm>
#include <utility>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "tool/text/failure.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

void AddColor(CLI::App& app, CommonOptions& options)
{
    app.add_flag("--color{always}", options.color,
                 "Colours: auto (a terminal, and NO_COLOR is not set), always, never")
        ->type_name("[=WHEN]")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
        ->group("Common options");
}

} // namespace

void AddCommonOptions(CLI::App& app, CommonOptions& options)
{
    const auto text = [&app](const char* names, std::string& into, const char* type, const char* help) {
        app.add_option(names, into, help)
            ->type_name(type)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
            ->group("Common options");
    };
    text("-c,--config", options.configuration, "TOP", "The top-level file, instead of the first argument");
    text("-r,--replace-data", options.replaceFile, "FILE", "Values of the ${NAME} placeholders in paths");
    app.add_option_function<std::vector<std::string>>(
           "-D,--define",
           [&options](const std::vector<std::string>& given) {
               for (auto& [name, value] : ReadDefinitions("-D", given)) {
                   options.definitions[name] = value;
               }
           },
           "One more such value; goes before the file's")
        ->type_name("NAME=VALUE")
        ->type_size(1)
        ->allow_extra_args(false)
        ->group("Common options");
    text("--root", options.device.root, "DIR", "Read the files of the device whose root is DIR");
    text("--passwd", options.device.passwd, "FILE", "The device's users; with --root, DIR/etc/passwd");
    text("--group", options.device.group, "FILE", "The device's groups; with --root, DIR/etc/group");
    text("-f,--format", options.format, "FORMAT",
         "Output format: text, json, or what else the command knows");
    text("-o,--output", options.output, "FILE", "Write the output to FILE, whole or not at all");
    AddColor(app, options);
    app.add_flag("-q,--quiet", options.isQuiet, "Say only what was asked for, and errors")
        ->group("Common options");
    app.add_flag("-v,--verbose", options.isVerbose, "Show what the library logs, on standard error")
        ->group("Common options");
}

std::map<std::string, std::string> ReadDefinitions(const std::string& option,
                                                   const std::vector<std::string>& given)
{
    std::map<std::string, std::string> definitions;
    for (const std::string& definition : given) {
        const std::size_t equals = definition.find('=');
        if (equals == std::string::npos) {
            throw UsageFailure(fmt::format("{} {}: write NAME=VALUE", option, definition));
        }
        definitions[definition.substr(0, equals)] = definition.substr(equals + 1);
    }
    return definitions;
}

std::string TakeTop(const CommonOptions& options, std::vector<std::string>& words)
{
    if (!options.configuration.empty()) {
        return options.configuration;
    }
    if (words.empty()) {
        throw UsageFailure("which configuration? Name its top-level file");
    }
    std::string top = std::move(words.front());
    words.erase(words.begin());
    return top;
}

void RefuseWords(const std::vector<std::string>& words)
{
    if (!words.empty()) {
        throw UsageFailure(fmt::format("\"{}\" is one argument too many", words.front()));
    }
}

RequestKind TakeRequestKind(std::vector<std::string>& words)
{
    if (words.empty()) {
        throw UsageFailure("start or stop?");
    }
    const std::string kind = std::move(words.front());
    words.erase(words.begin());
    if (kind != "start" && kind != "stop") {
        throw UsageFailure(
            fmt::format("\"{}\" is neither start nor stop{}", kind, DidYouMean(kind, {"start", "stop"})));
    }
    return kind == "start" ? RequestKind::START : RequestKind::STOP;
}

ConfigurationRequest RequestFor(const CommonOptions& options, std::string top)
{
    return {std::move(top), options.replaceFile, options.definitions, options.isVerbose, options.device};
}

const std::vector<std::string>& ColorChoices()
{
    static const std::vector<std::string> kChoices = {"auto", "always", "never"};
    return kChoices;
}

void CheckColor(const std::string& color)
{
    const std::vector<std::string>& choices = ColorChoices();
    if (std::find(choices.begin(), choices.end(), color) == choices.end()) {
        throw UsageFailure(fmt::format("--color={}: write auto, always or never", color));
    }
}

void CheckFormat(const std::string& format, const std::vector<std::string>& formats)
{
    if (std::find(formats.begin(), formats.end(), format) != formats.end()) {
        return;
    }
    throw UsageFailure(fmt::format("no format \"{}\" (there is {}){}", format, fmt::join(formats, ", "),
                                   DidYouMean(format, formats)));
}

} // namespace tool
