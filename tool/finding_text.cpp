#include "tool/finding_text.h"

#include <algorithm>

#include <fmt/format.h>

#include "tool/printable.h"

namespace tool {

namespace {

Color ColorOf(Level level)
{
    if (level == Level::ERROR) {
        return Color::RED;
    }
    return level == Level::WARNING ? Color::YELLOW : Color::GREEN;
}

const SourceFile* FileAt(const Configuration& configuration, const std::string& path)
{
    for (const SourceFile& file : configuration.tree.Files()) {
        if (file.Path() == path) {
            return &file;
        }
    }
    const auto& replace = configuration.replaceSource;
    return replace && replace->Path() == path ? &*replace : nullptr;
}

// The line with a mark below the finding's place.
std::string Excerpt(const Session& session, const Configuration& configuration, const Finding& finding)
{
    const SourceFile* file = FileAt(configuration, finding.position.file);
    const Mark mark = finding.position.mark;
    if (file == nullptr || mark.line == 0) {
        return "";
    }
    const std::string_view line = file->Line(mark.line);
    std::size_t bytes = 0;
    for (std::uint32_t column = 1; column < mark.column && bytes < line.size(); ++column) {
        do {
            ++bytes;
        } while (bytes < line.size() && (static_cast<unsigned char>(line[bytes]) & 0xC0U) == 0x80U);
    }
    const std::size_t before = Width(Printable(line.substr(0, bytes)));
    const std::string tail(finding.length > 1 ? finding.length - 1 : 0, '~');
    return fmt::format("{:>5} | {}\n      | {}{}\n", mark.line, Printable(line), std::string(before, ' '),
                       session.In(ColorOf(finding.rule->level), "^" + tail));
}

} // namespace

std::string FindingText(const Session& session, const Configuration& configuration, const Finding& finding)
{
    const Level level = finding.rule->level;
    std::string text =
        fmt::format("{}: {}: {} [{}]\n", session.In(Color::BOLD, Printable(ToText(finding.position))),
                    session.In(ColorOf(level), LevelName(level)), finding.message, finding.rule->id);
    text += Excerpt(session, configuration, finding);
    if (finding.visit != kNone && configuration.tree.Visits()[finding.visit].parent != kNone) {
        text += fmt::format("  files:  {}\n", Printable(configuration.tree.ChainTo(finding.visit)));
    }
    if (!finding.effect.empty()) {
        text += fmt::format("  effect: {}\n", finding.effect);
    }
    if (!finding.help.empty()) {
        text += fmt::format("  help:   {}\n", finding.help);
    }
    for (const Place& place : finding.related) {
        text += fmt::format("  {}: {}\n", Printable(ToText(place.position)), place.text);
    }
    return text;
}

} // namespace tool
