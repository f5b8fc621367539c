#include "tool/command_line/command_line.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

constexpr Description kMainText = {
    "Options and arguments may come in any order; \"--\" ends the options.",
    "0 done and nothing found, 1 something is wrong with what was asked about, 2 the work could\n"
    "not be done.",
    "",
};

constexpr char kCommonOptions[] = "Common options";

std::string ExitLine(const Description& help)
{
    return fmt::format("Exit status: {}\n", help.exits);
}

// The line of use first, then CLI11's list of options in GNU's spelling, then the command's own text.
class HelpFormatter : public CLI::Formatter {
public:
    explicit HelpFormatter(const CommandInfo& info = {}) : info_(info) { column_width(27); }

    // CLI11 leaves two empty lines between its groups.
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override
    {
        std::string text = CLI::Formatter::make_help(app, std::move(name), mode);
        for (std::size_t at = text.find("\n\n\n"); at != std::string::npos; at = text.find("\n\n\n", at)) {
            text.erase(at, 1);
        }
        return text;
    }

    std::string make_description(const CLI::App* /*app*/) const override { return ""; }

    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override
    {
        return fmt::format("Usage: startplan {} [OPTION]... {}\n\n{}.\n", info_.name, info_.arguments,
                           info_.summary);
    }

    std::string make_option_name(const CLI::Option* option, bool /*isPositional*/) const override
    {
        const std::vector<std::string>& shorts = option->get_snames();
        const std::vector<std::string>& longs = option->get_lnames();
        std::string name = shorts.empty() ? "    " : "-" + shorts.front() + (longs.empty() ? "" : ", ");
        if (!longs.empty()) {
            name += "--" + longs.front();
        }
        return name;
    }

    std::string make_option_opts(const CLI::Option* option) const override
    {
        const std::string type = option->get_type_name();
        return type.empty() || type.front() == '[' ? type : " " + type;
    }

    std::string make_footer(const CLI::App* /*app*/) const override
    {
        return fmt::format("\n{}\n\n{}Example: {}\n", info_.help.text, ExitLine(info_.help),
                           info_.help.example);
    }

private:
    CommandInfo info_;
};

constexpr std::string_view kNoConversion = "Could not convert: ";

// The words of CLI11 for a value that is left out or no number are hard to read.
std::string ReasonOf(const CLI::ParseError& error)
{
    std::string text = error.what(); // not const, so that the return below moves it
    if (error.get_name() == "ArgumentMismatch") {
        return fmt::format("{} needs a value", text.substr(0, text.find(':')));
    }
    if (error.get_name() == "ConversionError" && text.rfind(kNoConversion, 0) == 0) {
        return fmt::format("{} is no number", text.substr(kNoConversion.size()));
    }
    return text;
}

std::vector<std::string> OptionNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

void AddHelpAndVersion(CLI::App& app)
{
    app.set_help_flag("-h,--help", "Show this help")->group(kCommonOptions);
    app.add_flag("-V,--version", "Show the version")->group(kCommonOptions);
}

} // namespace

CommandLine::CommandLine() : app_("", "startplan"), infos_(Commands())
{
    app_.require_subcommand(0, 1);
    app_.allow_extras();
    AddCommonOptions(app_, options_);
    AddHelpAndVersion(app_);
    for (const CommandInfo& info : infos_) {
        // Words are taken as they are: CLI11 would split "[a,b]", and knows no words behind "--".
        app_.add_subcommand(info.name)->allow_extras();
    }
}

void CommandLine::DefineAll()
{
    for (const CommandInfo& info : infos_) {
        Define(info);
    }
}

void CommandLine::Define(const CommandInfo& info)
{
    CLI::App& app = *app_.get_subcommand(info.name);
    std::unique_ptr<Command> command = info.make();
    command->Define(app);
    AddCommonOptions(app, options_);
    app.get_option("--format")->description(fmt::format("Output format: {}", fmt::join(info.formats, ", ")));
    AddHelpAndVersion(app);
    app.formatter(std::make_shared<HelpFormatter>(info));
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
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    std::vector<std::string> behindOptions;
    if (end != arguments.end()) {
        behindOptions.assign(end + 1, arguments.end());
        arguments.erase(end, arguments.end());
    }
    // The options of all commands would take longer to define than a small configuration to read.
    for (const CommandInfo& info : infos_) {
        if (std::find(arguments.begin(), arguments.end(), info.name) != arguments.end()) {
            Define(info);
        }
    }
    ParseOptions(arguments);
    if (!helpText_.empty()) {
        return;
    }
    FailAtCommandName();
    try {
        TakeWords(behindOptions);
        CheckColor(options_.color);
        if (options_.format.empty()) {
            options_.format = Info().formats.front();
        }
        CheckFormat(options_.format, Info().formats);
    } catch (const UsageFailure& failure) {
        FailAt(failure.what());
    }
}

void CommandLine::ParseOptions(const std::vector<std::string>& arguments)
{
    const auto choose = [this] {
        const auto chosen = app_.get_subcommands();
        chosen_ = chosen.empty() ? std::string() : chosen.front()->get_name();
        return chosen.empty() ? &app_ : chosen.front();
    };
    try {
        app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        const CLI::App* app = choose();
        FailAtCommandName();
        helpText_ = chosen_.empty() ? MainHelp() : app->help();
        return;
    } catch (const CLI::ParseError& error) {
        choose();
        FailAtCommandName();
        FailAt(ReasonOf(error));
    } catch (const UsageFailure& failure) {
        choose();
        FailAt(failure.what());
    }
    const CLI::App* app = choose();
    if (app_.count("--version") + app->count("--version") != 0) {
        helpText_ = "startplan " STARTPLAN_VERSION "\n";
    }
}

void CommandLine::TakeWords(const std::vector<std::string>& behindOptions)
{
    const CLI::App* app = chosen_.empty() ? &app_ : app_.get_subcommand(chosen_);
    for (const std::string& word : app->remaining()) {
        if (word.size() > 1 && word.front() == '-') {
            throw UsageFailure(fmt::format("no option {}{}", word,
                                           DidYouMean(word.substr(0, word.find('=')), OptionNames(*app))));
        }
        words_.push_back(word);
    }
    if (chosen_.empty()) {
        throw UsageFailure("which command?");
    }
    words_.insert(words_.end(), behindOptions.begin(), behindOptions.end());
}

const CommandInfo& CommandLine::Info() const
{
    return *std::find_if(infos_.begin(), infos_.end(),
                         [this](const CommandInfo& info) { return info.name == chosen_; });
}

void CommandLine::FailAt(const std::string& message) const
{
    throw UsageFailure(fmt::format("{}\nTry \"startplan {}--help\".", Printable(message),
                                   chosen_.empty() ? chosen_ : chosen_ + " "));
}

// A word where the command's name should be.
void CommandLine::FailAtCommandName() const
{
    if (!chosen_.empty()) {
        return;
    }
    std::vector<std::string> names;
    for (const CommandInfo& info : infos_) {
        names.emplace_back(info.name);
    }
    for (const std::string& word : app_.remaining()) {
        if (!word.empty() && word.front() != '-') {
            FailAt(fmt::format("no command \"{}\"{}", word, DidYouMean(word, names)));
        }
    }
}

std::string CommandLine::ShortHelp() const
{
    std::string text = "Usage: startplan COMMAND [OPTION]... [TOP] [NAME]...\n\n"
                       "Works on the startup configuration below the top-level file TOP.\n";
    const Section* section = nullptr;
    for (const CommandInfo& info : infos_) {
        if (section == nullptr || *section != info.section) {
            text += fmt::format("\n{}:\n", TitleOf(info.section));
            section = &info.section;
        }
        text += fmt::format("  {:<11} {}\n", info.name, info.summary);
    }
    return text + "\n\"startplan COMMAND --help\" tells all about one command.\n";
}

const Description& CommandLine::MainText()
{
    return kMainText;
}

std::string CommandLine::MainHelp() const
{
    const HelpFormatter formatter;
    return ShortHelp() + formatter.make_group("Options of every command", false, app_.get_options()) + "\n" +
           kMainText.text + "\n\n" + ExitLine(kMainText);
}

} // namespace tool
