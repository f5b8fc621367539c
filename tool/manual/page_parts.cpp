#include "tool/manual/page_parts.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tool/manual/roff_text.h"

namespace tool {

namespace {

bool IsHeading(std::string_view block)
{
    return std::all_of(block.begin(), block.end(), [](char c) { return c == ' ' || (c >= 'A' && c <= 'Z'); });
}

// Each line without as many blanks as the first one begins with.
std::string WithoutIndent(std::string_view block)
{
    const std::size_t indent = block.find_first_not_of(' ');
    std::string lines;
    while (!block.empty()) {
        const std::string_view line = block.substr(0, block.find('\n'));
        lines += line.substr(std::min(indent, line.size()));
        lines += '\n';
        block.remove_prefix(std::min(line.size() + 1, block.size()));
    }
    return lines;
}

std::string TermOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) {
        names.push_back(RoffBold("-" + name));
    }
    for (const std::string& name : option.get_lnames()) {
        names.push_back(RoffBold("--" + name));
    }
    const std::string type = option.get_type_name();
    const bool isApart = !type.empty() && type.front() != '[';
    return fmt::format("{}{}{}", fmt::join(names, ", "), isApart ? " " : "", RoffUsage(type));
}

} // namespace

void AddBlocks(RoffPage& page, std::string_view text)
{
    while (!text.empty()) {
        const std::string_view block = text.substr(0, text.find("\n\n"));
        text.remove_prefix(std::min(block.size() + 2, text.size()));
        if (IsHeading(block)) {
            page.Section(block);
        } else if (block.front() == ' ') {
            page.Code(WithoutIndent(block));
        } else {
            page.Paragraph(block);
        }
    }
}

void AddOptions(RoffPage& page, const CLI::App& app, std::string_view group)
{
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_group() == group) {
            page.Item(TermOf(*option), Sentence(option->get_description()));
        }
    }
}

void AddExits(RoffPage& page, std::string_view exits)
{
    for (int status = 0; !exits.empty(); ++status) {
        const std::string number = fmt::format("{} ", status);
        if (exits.substr(0, number.size()) != number) {
            continue;
        }
        exits.remove_prefix(number.size());
        std::size_t end = exits.size();
        for (int next = status + 1; next <= EXIT_FAILED && end == exits.size(); ++next) {
            end = std::min(exits.find(fmt::format(", {} ", next)), exits.size());
        }
        page.Item(RoffBold(number.substr(0, 1)), Sentence(exits.substr(0, end)));
        exits.remove_prefix(std::min(end + 2, exits.size()));
    }
}

void AddEnvironment(RoffPage& page)
{
    page.Section("ENVIRONMENT");
    page.Item(RoffBold("NO_COLOR"),
              "If it is set to anything, there are no colours unless --color asks for them.");
    page.Item(RoffBold("TERM"), "If it is not set or `dumb`, likewise.");
}

std::set<std::string> VariablesOf(std::string_view usage, const CLI::App& app)
{
    std::set<std::string> variables = RoffVariables(usage);
    for (const CLI::Option* option : app.get_options()) {
        variables.merge(RoffVariables(option->get_type_name()));
    }
    return variables;
}

std::string Sentence(std::string_view text)
{
    std::string sentence(text);
    sentence.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence.front())));
    return sentence.back() == '.' ? sentence : sentence + ".";
}

} // namespace tool
