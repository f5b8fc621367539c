#include "tool/check.h"
#include "tool/command.h"
#include "tool/finding_text.h"
#include "tool/load.h"

namespace tool {

namespace {

class CheckCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        RefuseWords(words);
        const Configuration configuration = LoadConfiguration(RequestFor(session.Options(), top));
        session.Show(configuration.lines);
        CheckResult result{configuration, Check(configuration, {})};
        for (Finding& finding : result.findings) {
            finding.level = finding.rule->level;
        }
        PrintFindingsAsText(session, result);
        if (!configuration.WasRead()) {
            return EXIT_FAILED;
        }
        return result.Count(Level::ERROR) + result.Count(Level::WARNING) == 0 ? EXIT_DONE : EXIT_FINDINGS;
    }
};

constexpr char kHelp[] =
    "Reads the configuration exactly as the process manager would and reports every mistake in one run.\n\n"
    "Exit status: 0 nothing found, 1 findings, 2 the work could not be done.\n"
    "Example: startplan check top.yaml";

const CommandEntry kEntry({"check",
                           "[TOP]",
                           "Find the mistakes in a configuration",
                           kHelp,
                           Section::LOOK,
                           {"text"},
                           []() -> std::unique_ptr<Command> { return std::make_unique<CheckCommand>(); }});

} // namespace

} // namespace tool
