#include "tool/command_line/command.h"
#include "tool/completion/completion_scripts.h"
#include "tool/completion/completion_words.h"
#include "tool/text/suggest.h"

#include <fmt/format.h>

namespace tool {

namespace {

class CompletionCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        if (words.empty()) {
            throw UsageFailure("for which shell? Write bash, zsh or fish");
        }
        const std::string what = words.front();
        words.erase(words.begin());
        // What the scripts ask.
        if (what == "words") {
            const auto next = NextWords(words);
            PrintLines(session, next.value_or(std::vector<std::string>()));
            return next ? EXIT_DONE : EXIT_FINDINGS;
        }
        if (what == "names") {
            PrintLines(session, ApplicationsOf(words));
            return EXIT_DONE;
        }
        RefuseWords(words);
        session.Print(ScriptFor(what));
        return EXIT_DONE;
    }

private:
    static void PrintLines(Session& session, const std::vector<std::string>& lines)
    {
        for (const std::string& line : lines) {
            session.Print(line + "\n");
        }
    }

    static std::string ScriptFor(const std::string& shell)
    {
        const CompletionShapes shapes = MakeCompletionShapes();
        if (shell == "bash") {
            return BashScript(shapes);
        }
        if (shell == "zsh") {
            return ZshScript(shapes);
        }
        if (shell == "fish") {
            return FishScript(shapes);
        }
        throw UsageFailure(
            fmt::format("no shell \"{}\"{}", shell, DidYouMean(shell, {"bash", "zsh", "fish"})));
    }
};

constexpr Description kCompletionHelp = {
    "A script by which the shell completes commands, options, their values, files, and the names of\n"
    "applications once the line names a top-level file. The script says how it is used.",
    "0 done, 2 the work could not be done.",
    "source <(startplan completion bash)",
    "FILES\n\n"
    "The scripts are installed, too, where the shells look for them below the folder that the command\n"
    "was installed to: as share/bash-completion/completions/startplan,\n"
    "share/zsh/vendor-completions/_startplan and share/fish/vendor_completions.d/startplan.fish.",
    "For one user, in fish:\n\n"
    "    startplan completion fish >~/.config/fish/completions/startplan.fish",
};

const CommandEntry
    kCompletionEntry({"completion",
                      "bash|zsh|fish",
                      "A script that completes command lines in a shell",
                      kCompletionHelp,
                      Section::ABOUT,
                      {"text"},
                      []() -> std::unique_ptr<Command> { return std::make_unique<CompletionCommand>(); }});

} // namespace

} // namespace tool
