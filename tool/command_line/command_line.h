#ifndef STARTPLAN_TOOL_COMMAND_LINE_COMMAND_LINE_H
#define STARTPLAN_TOOL_COMMAND_LINE_COMMAND_LINE_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/options.h"
#include "tool/text/failure.h"

namespace tool {

// The command line of one run: which command, with which options.
class CommandLine {
public:
    CommandLine();

    // Throws UsageFailure with a message that ends in where to find help.
    void Parse(int argc, const char* const* argv);

    const CommonOptions& Options() const { return options_; }
    // What is to be printed instead of running a command: help or version. Empty for a command.
    const std::string& HelpText() const { return helpText_; }
    ExitStatus HelpStatus() const { return helpStatus_; }
    // Throws UsageFailure with the message and where to find help.
    [[noreturn]] void FailAt(const std::string& message) const;
    // Besides the options.
    const std::vector<std::string>& Words() const { return words_; }
    // @pre for both: HelpText() is empty.
    Command& TheCommand() const { return *commands_.at(chosen_); }
    const CommandInfo& Info() const;

    // What the command line is read by. Parse() defines the options of a command that is named; DefineAll(),
    // instead of it, those of all.
    void DefineAll();
    const std::vector<CommandInfo>& Infos() const { return infos_; }
    const CLI::App& AppOf(const CommandInfo& info) const { return *app_.get_subcommand(info.name); }
    // The options of every command, and what is said of all commands.
    const CLI::App& MainApp() const { return app_; }
    static const Description& MainText();

private:
    void Define(const CommandInfo& info);
    void ParseOptions(const std::vector<std::string>& arguments);
    void TakeWords(const std::vector<std::string>& behindOptions);
    void FailAtCommandName() const;
    std::string ShortHelp() const;
    std::string MainHelp() const;

    CLI::App app_;
    CommonOptions options_;
    std::vector<CommandInfo> infos_;
    std::map<std::string, std::unique_ptr<Command>> commands_;
    std::string chosen_;
    std::vector<std::string> words_;
    std::string helpText_;
    ExitStatus helpStatus_ = EXIT_DONE;
};

} // namespace tool

#endif
