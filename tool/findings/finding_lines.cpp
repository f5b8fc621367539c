#include "tool/findings/finding_lines.h"

#include <algorithm>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

// Such lines cannot speak of a file as a whole: its first character stands for it.
Position WithLine(Position position)
{
    position.mark.line = std::max<std::uint32_t>(1, position.mark.line);
    position.mark.column = std::max<std::uint32_t>(1, position.mark.column);
    return position;
}

// "%" and line ends have a meaning everywhere, ":" and "," in the properties before the message.
std::string Escaped(std::string_view text, bool isProperty)
{
    std::string escaped;
    for (const char c : text) {
        const bool isSpecial = c == '%' || c == '\r' || c == '\n' || (isProperty && (c == ':' || c == ','));
        escaped += isSpecial ? fmt::format("%{:02X}", static_cast<unsigned char>(c)) : std::string(1, c);
    }
    return escaped;
}

} // namespace

void PrintFindingsForEditors(Session& session, const CheckResult& result)
{
    for (const Finding& finding : result.findings) {
        const std::string where = Printable(ToText(WithLine(finding.position)));
        session.Print(fmt::format("{}: {}: {} [{}]\n", where, LevelName(finding.level), finding.message,
                                  finding.rule->id));
        if (!finding.effect.empty()) {
            session.Print(fmt::format("{}: note: effect: {}\n", where, finding.effect));
        }
        if (!finding.help.empty()) {
            session.Print(fmt::format("{}: note: help: {}\n", where, finding.help));
        }
        for (const Place& place : finding.related) {
            session.Print(
                fmt::format("{}: note: {}\n", Printable(ToText(WithLine(place.position))), place.text));
        }
    }
}

void PrintFindingsForWorkflows(Session& session, const CheckResult& result)
{
    for (const Finding& finding : result.findings) {
        const Position position = WithLine(finding.position);
        std::string text = finding.message;
        if (!finding.effect.empty()) {
            text += "\neffect: " + finding.effect;
        }
        if (!finding.help.empty()) {
            text += "\nhelp: " + finding.help;
        }
        for (const Place& place : finding.related) {
            text += fmt::format("\n{}: {}", Printable(ToText(place.position)), place.text);
        }
        const std::string_view level = finding.level == Level::NOTE ? "notice" : LevelName(finding.level);
        session.Print(fmt::format("::{} file={},line={},col={},title={}::{}\n", level,
                                  Escaped(Printable(position.file), true), position.mark.line,
                                  position.mark.column, finding.rule->id, Escaped(text, false)));
    }
}

} // namespace tool
