#include "tool/command_line.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "tool/printable.h"
#include "tool/suggest.h"

namespace tool {

namespace {

constexpr const char* kSectionTitles[] = {"Look at a configuration", "Requests", "Names and patterns",
                                          "About this command"};

// CLI11's own text, but for the line of use.
class HelpFormatter : public CLI::Formatter {
public:
    explicit HelpFormatter(std::string usage) : usage_(std::move(usage)) { column_width(30); }

    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override
    {
        return "Usage: " + usage_ + "\n";
    }

private:
    std::string usage_;
};

} // namespace

CommandLine::CommandLine() : app_("", "startplan"), infos_(Commands())
{
    app_.require_subcommand(0, 1);
    app_.set_help_flag("-h,--help", "Show this help");
    app_.add_flag("-V,--version", "Show the version");
    AddCommonOptions(app_, options_);
    for (const CommandInfo& info : infos_) {
        Add(info);
    }
}

void CommandLine::Add(const CommandInfo& info)
{
    CLI::App& app = *app_.add_subcommand(info.name, std::string(info.summary) + ".");
    app.set_help_flag("-h,--help", "Show this help")->group("Common options");
    app.add_flag("-V,--version", "Show the version")->group("Common options");
    const std::string formats = fmt::format("Output format: {}", fmt::join(info.formats, ", "));
    std::unique_ptr<Command> command = info.make();
    command->Define(app);
    AddCommonOptions(app, options_);
    app.get_option("--format")->description(formats);
    app.footer(info.footer);
    app.formatter(std::make_shared<HelpFormatter>(
        fmt::format("startplan {} [OPTION]... {}", info.name, info.arguments)));
    commands_[info.name] = std::move(command);
}

void CommandLine::Parse(int argc, const char* const* argv)
{
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (arguments.empty()) {
        helpText_ = ShortHelp();
        helpStatus_ = EXIT_FAILED;
        return;
    }
    try {
        app_.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        const auto chosen = app_.get_subcommands();
        helpText_ = chosen.empty() ? MainHelp() : chosen.front()->help();
        return;
    } catch (const CLI::ParseError& error) {
        Choose();
        if (chosen_.empty()) {
            CheckCommandName(arguments);
        }
        FailAt(error.what());
    } catch (const UsageFailure& failure) {
        Choose();
        FailAt(failure.what());
    }
    Choose();
    if (app_.count("--version") != 0 ||
        (!chosen_.empty() && app_.get_subcommand(chosen_)->count("--version") != 0)) {
        helpText_ = "startplan " STARTPLAN_VERSION "\n";
        return;
    }
    if (chosen_.empty()) {
        FailAt("which command?");
    }
    const auto info = std::find_if(infos_.begin(), infos_.end(),
                                   [this](const CommandInfo& one) { return one.name == chosen_; });
    CheckFormat(options_.format, info->formats);
}

void CommandLine::Choose()
{
    const auto chosen = app_.get_subcommands();
    chosen_ = chosen.empty() ? std::string() : chosen.front()->get_name();
}

void CommandLine::FailAt(const std::string& message) const
{
    throw UsageFailure(fmt::format("{}\nTry \"startplan {}--help\".", Printable(message),
                                   chosen_.empty() ? chosen_ : chosen_ + " "));
}

// A word that is no option, in front of any command's name, must be a misspelt name.
void CommandLine::CheckCommandName(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> names;
    for (const CommandInfo& info : infos_) {
        names.emplace_back(info.name);
    }
    for (const std::string& word : app_.remaining()) {
        if (!word.empty() && word.front() != '-') {
            FailAt(fmt::format("no command \"{}\"{}", word, DidYouMean(word, names)));
        }
    }
    if (arguments.front().empty() || arguments.front().front() != '-') {
        FailAt(fmt::format("no command \"{}\"{}", arguments.front(), DidYouMean(arguments.front(), names)));
    }
}

std::string CommandLine::ShortHelp() const
{
    std::string text = "Usage: startplan COMMAND [OPTION]... [TOP] [NAME]...\n\n"
                       "Works on the startup configuration below the top-level file TOP.\n";
    const Section* section = nullptr;
    for (const CommandInfo& info : infos_) {
        if (section == nullptr || *section != info.section) {
            text += fmt::format("\n{}:\n", kSectionTitles[static_cast<std::size_t>(info.section)]);
            section = &info.section;
        }
        text += fmt::format("  {:<11} {}\n", info.name, info.summary);
    }
    return text + "\n\"startplan COMMAND --help\" tells all about one command.\n";
}

std::string CommandLine::MainHelp() const
{
    return ShortHelp() +
           "\n"
           "Options of every command:\n"
           "  -c, --config TOP         The top-level file, instead of the first argument\n"
           "  -r, --replace-data FILE  Values of the ${NAME} placeholders in paths\n"
           "  -D, --define NAME=VALUE  One more such value; goes before the file's\n"
           "  -f, --format FORMAT      Output format: text, json\n"
           "  -o, --output FILE        Write the output to FILE, whole or not at all\n"
           "      --color[=WHEN]       auto (a terminal, and NO_COLOR is not set), always, never\n"
           "  -q, --quiet              Say only what was asked for, and errors\n"
           "  -v, --verbose            Show what the library logs, on standard error\n"
           "  -h, --help               Show help\n"
           "  -V, --version            Show the version\n"
           "\n"
           "Options and arguments may come in any order; \"--\" ends the options.\n"
           "\n"
           "Exit status: 0 done and nothing found; 1 findings: something is wrong with what was\n"
           "asked about; 2 the work could not be done.\n";
}

} // namespace tool
