#include "tool/manual/rules_page.h"

#include <string_view>

#include <fmt/format.h>

#include "tool/manual/page_parts.h"
#include "tool/manual/roff_text.h"
#include "tool/rules/rules.h"

namespace tool {

namespace {

constexpr char kDescription[] =
    "Each rule stands for one mistake, or for one thing worth knowing, in a startup configuration, see "
    "startplan(5). startplan-check(1) looks for all of them and shows a rule's name in brackets behind each "
    "finding; \"startplan explain RULE\" shows one rule on the terminal.\n\n"
    "A rule has a level. An error is something that the device will not do as it was meant, a warning is "
    "something that very likely is a mistake, a note is worth knowing. -W RULE=LEVEL changes a rule's level "
    "and "
    "-W RULE=off turns it off. A comment \"# startplan: ignore[RULE]\" hides what it finds in its own line, "
    "or "
    "in the next one where it has a line of its own. In place of a rule's name the name of its group stands "
    "for "
    "all of the group.";

void AddRule(RoffPage& page, const Rule& rule)
{
    page.Item(fmt::format("{} ({})", RoffBold(rule.id), LevelName(rule.level)), Sentence(rule.summary));
    page.AddToItem(rule.text);
    if (*rule.example != '\0') {
        page.Code(rule.example, true);
    }
    page.AddToItem(fmt::format("On the device: {}", rule.effect));
    page.AddToItem(fmt::format("To mend it: {}", rule.fix));
}

} // namespace

std::string RulesPage(const Edition& edition)
{
    RoffPage page("startplan-rules", 7, "what the check of a startup configuration looks for", edition);
    page.AddVariables({"RULE", "LEVEL"});
    page.Section("DESCRIPTION");
    AddBlocks(page, kDescription);
    const Rule* before = nullptr;
    for (const Rule* rule : Rules()) {
        if (before == nullptr || before->group != rule->group) {
            page.Section(InCapitals(GroupTitle(rule->group)));
        }
        before = rule;
        AddRule(page, *rule);
    }
    page.Section("SEE ALSO");
    page.Paragraph(
        "startplan(1), startplan-check(1), startplan-explain(1), startplan-rules(1), startplan(5)");
    return page.Text();
}

} // namespace tool
