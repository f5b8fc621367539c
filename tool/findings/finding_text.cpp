#include "tool/findings/finding_text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include <fmt/format.h>

#include "tool/findings/excerpt.h"
#include "tool/library/result_names.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

// A longer line is no help to anyone's eyes.
constexpr std::size_t kLongestExcerpt = 1000;

Color ColorOf(Level level)
{
    if (level == Level::ERROR) {
        return Color::RED;
    }
    return level == Level::WARNING ? Color::YELLOW : Color::GREEN;
}

class TextPrinter {
public:
    TextPrinter(Session& session, const CheckResult& result) : session_(session), result_(result)
    {
        for (const SourceFile& file : result.configuration.tree.Files()) {
            files_[file.Path()] = &file;
        }
        if (result.configuration.replaceSource) {
            files_.emplace(result.configuration.replaceSource->Path(), &*result.configuration.replaceSource);
        }
    }

    void Print()
    {
        for (const Finding& finding : result_.findings) {
            PrintFinding(finding);
            session_.Print("\n");
        }
        if (!session_.Options().isQuiet) {
            session_.Print(Summary());
        }
    }

private:
    void PrintFinding(const Finding& finding)
    {
        session_.Print(fmt::format("{}: {}: {} {}\n",
                                   session_.In(Color::BOLD, Printable(ToText(finding.position))),
                                   session_.In(ColorOf(finding.level), LevelName(finding.level)),
                                   session_.In(Color::BOLD, finding.message),
                                   session_.In(Color::DIM, fmt::format("[{}]", finding.rule->id))));
        PrintExcerpt(finding);
        const SourceTree& tree = result_.configuration.tree;
        if (finding.visit != kNone && tree.Visits()[finding.visit].parent != kNone) {
            PrintLabelled("files:  ", Printable(tree.ChainTo(finding.visit)));
        }
        PrintLabelled("effect: ", finding.effect);
        PrintLabelled("help:   ", finding.help);
        for (const Place& place : finding.related) {
            session_.Print(fmt::format("  {}: {}\n", Printable(ToText(place.position)), place.text));
        }
    }

    void PrintExcerpt(const Finding& finding)
    {
        const auto file = files_.find(finding.position.file);
        if (file == files_.end() || finding.position.mark.line == 0) {
            return;
        }
        const std::string_view line = file->second->Line(finding.position.mark.line);
        if (line.size() > kLongestExcerpt || line.find_first_not_of(' ') == std::string_view::npos) {
            return;
        }
        const std::string number = fmt::format("{:>5} | ", finding.position.mark.line);
        const std::size_t width = session_.Width() > number.size() ? session_.Width() - number.size() : 0;
        const Excerpt excerpt = MakeExcerpt(file->second->Line(finding.position.mark.line),
                                            finding.position.mark.column, finding.length, width);
        session_.Print(fmt::format("{}{}\n{:>5} | {}{}\n", number, excerpt.line, "",
                                   std::string(excerpt.indent, ' '),
                                   session_.In(ColorOf(finding.level), excerpt.mark)));
    }

    // Wrapped behind its label where the terminal is too narrow for one line.
    void PrintLabelled(std::string_view label, const std::string& text)
    {
        if (text.empty()) {
            return;
        }
        const std::size_t indent = label.size() + 2;
        const std::vector<std::string> lines =
            WrapWords(text, session_.Width() > indent ? session_.Width() - indent : 0);
        session_.Print(fmt::format("  {}{}\n", session_.In(Color::BOLD, label), lines.front()));
        for (std::size_t i = 1; i < lines.size(); ++i) {
            session_.Print(fmt::format("{}{}\n", std::string(indent, ' '), lines[i]));
        }
    }

    // "2 errors, 1 warning; 12 applications from 3 files; result ..."
    std::string Summary() const
    {
        const Configuration& configuration = result_.configuration;
        std::string text;
        const auto count = [&text](std::size_t number, const char* one, const char* many) {
            if (number != 0) {
                text += fmt::format("{}{} {}", text.empty() ? "" : ", ", number, number == 1 ? one : many);
            }
        };
        count(result_.Count(Level::ERROR), "error", "errors");
        count(result_.Count(Level::WARNING), "warning", "warnings");
        count(result_.Count(Level::NOTE), "note", "notes");
        if (text.empty()) {
            text = "nothing found";
        }
        if (result_.ignored != 0) {
            text += fmt::format(" ({} ignored)", result_.ignored);
        }
        if (!configuration.WasRead()) {
            return text + "; the library was not called\n";
        }
        text += fmt::format("; {} {} from {} {}", configuration.apps.size(),
                            configuration.apps.size() == 1 ? "application" : "applications",
                            configuration.FilesRead(), configuration.FilesRead() == 1 ? "file" : "files");
        if (configuration.result != 0) {
            text += fmt::format("; result {}", ResultText(configuration.result));
        }
        return text + "\n";
    }

    Session& session_;
    const CheckResult& result_;
    std::unordered_map<std::string, const SourceFile*> files_;
};

} // namespace

void PrintFindingsAsText(Session& session, const CheckResult& result)
{
    TextPrinter(session, result).Print();
}

} // namespace tool
