#include "tool/findings/rule_page.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/findings/excerpt.h"
#include "tool/rules/rules.h"

namespace tool {

namespace {

constexpr std::size_t kPageWidth = 100;

constexpr char kPageStart[] =
    "# What `startplan check` looks for\n"
    "\n"
    "This page is made from the rules themselves, by `startplan rules --format markdown`; a test holds that "
    "it is\n"
    "up to date. `startplan explain RULE` shows one of them on the terminal.\n"
    "\n"
    "Each rule has a level: an *error* is something that the device will not do as it was meant, a *warning* "
    "is\n"
    "something that very likely is a mistake, a *note* is worth knowing. `-W RULE=LEVEL` changes a rule's "
    "level and\n"
    "`-W RULE=off` turns it off; a comment `# startplan: ignore[RULE]` hides what it finds in one line.\n";

// Texts are broken into lines in the source only to be readable there; an empty line ends a paragraph.
std::string Joined(std::string_view text)
{
    std::string joined(text);
    for (std::size_t at = joined.find('\n'); at != std::string::npos; at = joined.find('\n', at + 1)) {
        if (at + 1 < joined.size() && joined[at + 1] == '\n') {
            ++at;
            continue;
        }
        joined[at] = ' ';
    }
    return joined;
}

// The paragraphs of a text, wrapped.
std::string Paragraph(std::string_view text, std::size_t width)
{
    const std::string joined = Joined(text);
    std::string out;
    std::size_t at = 0;
    while (at < joined.size()) {
        const std::size_t end = std::min(joined.find('\n', at), joined.size());
        for (const std::string& line : WrapWords(joined.substr(at, end - at), width)) {
            out += line + "\n";
        }
        at = end + 1;
    }
    return out;
}

std::string Indented(std::string_view text)
{
    std::string out;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        out += fmt::format("{}{}\n", end == 0 ? "" : "    ", text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return out;
}

// Outside of code these would be markup.
std::string Escaped(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        if (c == '<' || c == '*') {
            out += '\\';
        }
        out += c;
    }
    return out;
}

std::string RuleAsMarkdown(const Rule& rule)
{
    const auto paragraph = [](std::string_view text) { return Paragraph(Escaped(text), kPageWidth); };
    std::string page = fmt::format("\n### {}\n\n*{}*: {}.\n\n{}", rule.id, LevelName(rule.level),
                                   Escaped(rule.summary), paragraph(rule.text));
    if (*rule.example != '\0') {
        page += fmt::format("\n```yaml\n{}```\n", rule.example);
    }
    page += "\n" + paragraph(fmt::format("On the device: {}", rule.effect));
    page += "\n" + paragraph(fmt::format("To mend it: {}", rule.fix));
    return page;
}

} // namespace

std::string ExplainRule(const Session& session, const Rule& rule)
{
    const std::size_t width = session.Width() == 0 ? kPageWidth : std::min(session.Width(), kPageWidth);
    std::string page =
        Paragraph(fmt::format("{}: {}.", session.In(Color::BOLD, rule.id), rule.summary), width);
    page += fmt::format("Group: {}; level: {}.\n", GroupTitle(rule.group), LevelName(rule.level));
    page += "\n" + Paragraph(rule.text, width);
    if (*rule.example != '\0') {
        page += fmt::format("\n{}\n{}", session.In(Color::BOLD, "Example"), Indented(rule.example));
    }
    page += fmt::format("\n{}\n{}", session.In(Color::BOLD, "On the device"), Paragraph(rule.effect, width));
    page += fmt::format("\n{}\n{}", session.In(Color::BOLD, "To mend it"), Paragraph(rule.fix, width));
    return page;
}

Json RuleAsJson(const Rule& rule)
{
    return {{"rule", rule.id},
            {"group", GroupTitle(rule.group)},
            {"level", LevelName(rule.level)},
            {"summary", rule.summary},
            {"text", Joined(rule.text)},
            {"example", rule.example},
            {"effect", Joined(rule.effect)},
            {"fix", Joined(rule.fix)}};
}

std::string RulesAsMarkdown()
{
    std::string page = kPageStart;
    const Rule* before = nullptr;
    for (const Rule* rule : Rules()) {
        if (before == nullptr || before->group != rule->group) {
            page += fmt::format("\n## {}\n", GroupTitle(rule->group));
        }
        before = rule;
        page += RuleAsMarkdown(*rule);
    }
    return page;
}

} // namespace tool
