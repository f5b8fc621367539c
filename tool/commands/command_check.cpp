#include <fmt/format.h>

#include "tool/check/check.h"
#include "tool/command_line/command.h"
#include "tool/command_line/command_options.h"
#include "tool/findings/baseline.h"
#include "tool/findings/finding_json.h"
#include "tool/findings/finding_lines.h"
#include "tool/findings/finding_sarif.h"
#include "tool/findings/finding_text.h"

namespace tool {

namespace {

// Whether the files that the command line names could be read.
bool AreNamedFilesRead(const Configuration& configuration)
{
    if (!configuration.WasRead()) {
        return false;
    }
    const auto& replace = configuration.replaceSource;
    return configuration.tree.FileOf(0).State() != FileState::UNREADABLE &&
           (!replace || replace->State() != FileState::UNREADABLE);
}

class CheckCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        AddListOption(app, "-W,--level", "RULE=LEVEL",
                      "Make a rule an error, a warning or a note, or turn it off",
                      [this](const std::string& one) { levels_.Set(one); });
        AddListOption(app, "--select", "RULES", "Look for these rules or groups of rules only",
                      [this](const std::string& one) { levels_.Select(one); });
        AddListOption(app, "--ignore", "RULES", "Do not look for these",
                      [this](const std::string& one) { levels_.Ignore(one); });
        AddListOption(app, "--fail-level", "LEVEL",
                      "Exit with 1 from this level on: note, warning (default), error, never",
                      [this](const std::string& one) { failLevel_ = ParseFailLevel(one); });
        AddListOption(app, "--baseline", "FILE", "Do not report the findings in FILE",
                      [this](const std::string& one) { baseline_ = one; });
        AddListOption(app, "--write-baseline", "FILE", "Write the findings to FILE instead of reporting them",
                      [this](const std::string& one) { newBaseline_ = one; });
        AddListOption(app, "--start", "NAME", "Check a request to start NAME, and all other --start names",
                      [this](const std::string& one) { start_.names.push_back(one); });
        AddListOption(app, "--stop", "NAME", "Check a request to stop NAME, and all other --stop names",
                      [this](const std::string& one) { stop_.names.push_back(one); });
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        RefuseWords(words);
        const Configuration configuration = LoadConfiguration(RequestFor(session.Options(), top));
        session.Show(configuration.lines);
        CheckResult result = Check(configuration, Requests(), levels_);
        const bool isDone = AreNamedFilesRead(configuration);
        if (!newBaseline_.empty() && isDone) {
            Baseline::Write(newBaseline_, result.findings);
            session.Note(fmt::format("{} findings written to \"{}\"", result.findings.size(), newBaseline_));
            return EXIT_DONE;
        }
        HideKnown(session, result);
        Print(session, result, isDone);
        if (!isDone) {
            return EXIT_FAILED;
        }
        return IsBad(result) ? EXIT_FINDINGS : EXIT_DONE;
    }

private:
    std::vector<RequestToCheck> Requests() const
    {
        std::vector<RequestToCheck> requests;
        for (const RequestToCheck& request : {start_, stop_}) {
            if (!request.names.empty()) {
                requests.push_back(request);
            }
        }
        return requests;
    }

    void HideKnown(const Session& session, CheckResult& result) const
    {
        if (baseline_.empty()) {
            return;
        }
        Baseline baseline = Baseline::Read(baseline_);
        result.ignored += baseline.Hide(result.findings);
        if (baseline.Left() != 0) {
            session.Note(fmt::format("{} findings of the baseline are gone; --write-baseline writes it anew",
                                     baseline.Left()));
        }
    }

    static void Print(Session& session, const CheckResult& result, bool isDone)
    {
        const std::string& format = session.Options().format;
        if (format == "json") {
            PrintFindingsAsJson(session, result);
        } else if (format == "sarif") {
            PrintFindingsAsSarif(session, result, isDone);
        } else if (format == "gcc") {
            PrintFindingsForEditors(session, result);
        } else if (format == "github") {
            PrintFindingsForWorkflows(session, result);
        } else {
            PrintFindingsAsText(session, result);
        }
    }

    bool IsBad(const CheckResult& result) const
    {
        for (const Finding& finding : result.findings) {
            if (failLevel_ != Level::OFF && finding.level >= failLevel_) {
                return true;
            }
        }
        return false;
    }

    RuleLevels levels_;
    Level failLevel_ = Level::WARNING;
    std::string baseline_;
    std::string newBaseline_;
    RequestToCheck start_{RequestKind::START, {}};
    RequestToCheck stop_{RequestKind::STOP, {}};
};

constexpr Description kCheckHelp = {
    "Reads the configuration exactly as the process manager would and reports every mistake in one run: "
    "where\n"
    "it stands, what the device would really do, and how to mend it. RULE is a rule's id or a group's name,\n"
    "see \"startplan rules\" and \"startplan explain RULE\".\n\n"
    "A comment \"# startplan: ignore[RULE]\" hides the findings of a rule in its own line, or in the next "
    "one\n"
    "where it has a line of its own.",
    "0 nothing found at or above --fail-level, 1 findings, 2 the top-level or the replace file\n"
    "cannot be read, or the input must not be given to the library.",
    "startplan check -r replace.yaml top.yaml",
    "FORMATS\n\n"
    "The first format is for people. \"gcc\" is what editors take from a compiler, \"github\" shows\n"
    "findings beside the changed lines of a workflow on that host, \"sarif\" is the interchange format\n"
    "SARIF 2.1.0, and \"json\" holds everything, the library's result code included; \"startplan schema\n"
    "diagnostics\" prints its schema.\n\n"
    "BASELINES\n\n"
    "For an old configuration with many findings --write-baseline writes down what is known, and\n"
    "--baseline reports what is new. A baseline holds no lines, so it survives edits.",
    "What is new since the baseline was written:\n\n"
    "    startplan check --write-baseline known.json -r replace.yaml top.yaml\n"
    "    startplan check --baseline known.json -r replace.yaml top.yaml\n\n"
    "For an editor, what is wrong with the tree of files alone:\n\n"
    "    startplan check -f gcc --select tree -r replace.yaml top.yaml\n\n"
    "One rule less, and exit status 1 for errors only:\n\n"
    "    startplan check --ignore redundant-dependency --fail-level error top.yaml",
};

const CommandEntry
    kCheckEntry({"check",
                 "[TOP]",
                 "Find the mistakes in a configuration",
                 kCheckHelp,
                 Section::LOOK,
                 {"text", "gcc", "github", "json", "sarif"},
                 []() -> std::unique_ptr<Command> { return std::make_unique<CheckCommand>(); }});

} // namespace

} // namespace tool
