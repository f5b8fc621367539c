#include "tool/manual/roff_page.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

#include "tool/manual/roff_text.h"

namespace tool {

namespace {

std::string_view LastLine(std::string_view text)
{
    text.remove_suffix(text.empty() ? 0 : 1);
    const std::size_t end = text.rfind('\n');
    return end == std::string_view::npos ? text : text.substr(end + 1);
}

} // namespace

RoffPage::RoffPage(std::string_view name, int section, std::string_view summary, const Edition& edition)
    : text_(fmt::format(".TH {} {} \"{}\" \"startplan {}\" \"startplan\"\n", RoffLiteral(InCapitals(name)),
                        section, edition.date, edition.version))
{
    // Names, paths and options are to be found and copied whole: nothing is hyphenated, neither here nor behind the
    // macros that switch it on again.
    text_ += ".nh\n.nr HY 0\n.ad l\n";
    Section("NAME");
    std::string about(summary);
    about.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(about.front())));
    Line(fmt::format("{} \\- {}", RoffLiteral(name), RoffLiteral(about)));
}

void RoffPage::AddVariables(const std::set<std::string>& variables)
{
    variables_.insert(variables.begin(), variables.end());
}

void RoffPage::Section(std::string_view title)
{
    Line(fmt::format(".SH {}", RoffLiteral(title)));
}

void RoffPage::Subsection(std::string_view title)
{
    Line(fmt::format(".SS {}", RoffLiteral(title)));
}

void RoffPage::Paragraph(std::string_view prose)
{
    Line(".PP");
    Prose(prose);
}

void RoffPage::Line(std::string_view roff)
{
    // A paragraph begins with its heading.
    const std::string_view before = LastLine(text_).substr(0, 3);
    if (roff == ".PP" && (before.empty() || before == ".SH" || before == ".SS")) {
        return;
    }
    text_ += roff;
    text_ += '\n';
}

void RoffPage::Item(std::string_view term, std::string_view prose)
{
    Line(".TP");
    Line(term);
    Prose(prose);
}

void RoffPage::AddToItem(std::string_view prose)
{
    while (!prose.empty()) {
        const std::string_view paragraph = prose.substr(0, prose.find("\n\n"));
        Line(".IP");
        Prose(paragraph);
        prose.remove_prefix(std::min(paragraph.size() + 2, prose.size()));
    }
}

void RoffPage::Code(std::string_view lines, bool isInItem)
{
    Line(isInItem ? ".IP" : ".PP");
    Line(".in +4n");
    Line(".EX");
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        const bool isRequest = line.empty() || line.front() == '.' || line.front() == '\'';
        Line((isRequest ? "\\&" : "") + RoffLiteral(line));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    }
    Line(".EE");
    Line(".in");
}

void RoffPage::Prose(std::string_view prose)
{
    for (const std::string& line : RoffProse(prose, variables_)) {
        Line(line);
    }
}

} // namespace tool
