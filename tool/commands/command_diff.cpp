#include <map>
#include <utility>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/commands/configuration_diff.h"
#include "tool/commands/configuration_diff_text.h"

namespace tool {

namespace {

class DiffCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        app.add_option("--new-replace-data", newReplaceFile_, "Replace data of NEW, instead of those of -r")
            ->type_name("FILE")
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
            ->group("Options");
        app.add_option("--new-define", newDefinitions_, "One value for NEW alone; goes before the others")
            ->type_name("NAME=VALUE")
            ->type_size(1)
            ->allow_extra_args(false)
            ->group("Options");
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string oldTop = TakeTop(session.Options(), words);
        if (words.empty()) {
            throw UsageFailure("compare with which configuration? Name its top-level file, too");
        }
        ConfigurationRequest request = RequestFor(session.Options(), words.front());
        words.erase(words.begin());
        RefuseWords(words);
        for (const auto& [name, value] : ReadDefinitions("--new-define", newDefinitions_)) {
            request.definitions[name] = value;
        }
        if (!newReplaceFile_.empty()) {
            request.replaceFile = newReplaceFile_;
        }
        const Configuration before = LoadForWork(session, oldTop);
        const Configuration after = LoadForWork(session, std::move(request));
        const ConfigurationDiff diff = Compare(before, after);
        if (session.IsJson()) {
            session.PrintJson(DiffJson(before, after, diff));
        } else {
            PrintDiff(session, before, after, diff);
        }
        return diff.IsSame() ? EXIT_DONE : EXIT_FINDINGS;
    }

private:
    std::string newReplaceFile_;
    std::vector<std::string> newDefinitions_;
};

constexpr Description kDiffHelp = {
    "What changes on the device when the one configuration takes the place of the other: applications, each\n"
    "setting with the value that the device gets, dependencies, what is dropped, in which round of a "
    "request\n"
    "for all each application is started and stopped, and the critical path with the times that "
    "\"simulate\"\n"
    "takes by itself. The order of files and entries counts for nothing, nor does the folder of the tree.\n"
    "-r and -D are for both; a top-level file can be compared with itself under other replace data.",
    "0 no difference, 1 they differ, 2 the work could not be done.",
    "startplan diff -D KIT=a --new-define KIT=b top.yaml top.yaml",
    "",
    "Two states of a tree:\n\n"
    "    startplan diff -r replace.yaml old/top.yaml new/top.yaml",
};

const CommandEntry kDiffEntry({"diff",
                               "OLD NEW",
                               "What changes on the device from one configuration to another",
                               kDiffHelp,
                               Section::LOOK,
                               {"text", "json"},
                               []() -> std::unique_ptr<Command> { return std::make_unique<DiffCommand>(); }});

} // namespace

} // namespace tool
