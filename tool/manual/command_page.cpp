#include "tool/manual/command_page.h"

#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tool/manual/page_parts.h"
#include "tool/manual/roff_text.h"

namespace tool {

namespace {

std::string PageName(const CommandInfo& info)
{
    return fmt::format("startplan-{}", info.name);
}

// The pages of the commands of a section, or of all, but for one; then those that every page names.
std::string SeeAlso(const CommandLine& line, std::string_view first, const CommandInfo* besides)
{
    std::vector<std::string> pages = {std::string(first)};
    for (const CommandInfo& info : line.Infos()) {
        if (besides == nullptr || (info.section == besides->section && info.name != besides->name)) {
            pages.push_back(fmt::format("{}(1)", PageName(info)));
        }
    }
    pages.insert(pages.end(), {"startplan(5)", "startplan-rules(7)"});
    return fmt::format("{}", fmt::join(pages, ", "));
}

std::string CommandItems(const CommandLine& line)
{
    RoffPage part;
    const Section* section = nullptr;
    for (const CommandInfo& info : line.Infos()) {
        if (section == nullptr || *section != info.section) {
            part.Subsection(TitleOf(info.section));
            section = &info.section;
        }
        part.Item(RoffBold(PageName(info)) + "(1)", Sentence(info.summary));
    }
    return part.Text();
}

// What `add` puts on an empty page.
template <typename Add>
std::string Part(Add add)
{
    RoffPage part;
    add(part);
    return part.Text();
}

} // namespace

std::string CommandPage(const CommandLine& line, const CommandInfo& info, const Edition& edition)
{
    const CLI::App& app = line.AppOf(info);
    RoffPage page(PageName(info), 1, info.summary, edition);
    page.AddVariables(VariablesOf(info.arguments, app));
    page.Section("SYNOPSIS");
    page.Line(fmt::format("{} {} [{}]...{}{}", RoffBold("startplan"), RoffBold(info.name),
                          RoffItalic("OPTION"), *info.arguments == '\0' ? "" : " ",
                          RoffUsage(info.arguments)));
    page.Section("DESCRIPTION");
    AddBlocks(page, info.help.text);
    page.Section("OPTIONS");
    AddOptions(page, app, "Options");
    page.Subsection("Common options");
    AddOptions(page, app, "Common options");
    page.Section("EXIT STATUS");
    AddExits(page, info.help.exits);
    AddEnvironment(page);
    AddBlocks(page, info.help.more);
    page.Section("EXAMPLES");
    page.Code(info.help.example);
    AddBlocks(page, info.help.examples);
    page.Section("SEE ALSO");
    page.Paragraph(SeeAlso(line, "startplan(1)", &info));
    return page.Text();
}

std::map<std::string, std::string> MainPageParts(const CommandLine& line)
{
    const Description& help = CommandLine::MainText();
    return {{"COMMANDS", CommandItems(line)},
            {"TEXT", Part([&](RoffPage& part) { part.Paragraph(help.text); })},
            {"OPTIONS", Part([&](RoffPage& part) {
                 part.AddVariables(VariablesOf("", line.MainApp()));
                 AddOptions(part, line.MainApp(), "Common options");
             })},
            {"EXITS", Part([&](RoffPage& part) { AddExits(part, help.exits); })},
            {"ENVIRONMENT", Part(AddEnvironment)},
            {"SEE ALSO",
             Part([&](RoffPage& part) { part.Paragraph(SeeAlso(line, "libstartplan(3)", nullptr)); })}};
}

} // namespace tool
