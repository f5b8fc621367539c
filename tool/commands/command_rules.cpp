#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/text_table.h"
#include "tool/findings/rule_page.h"
#include "tool/rules/rules.h"

namespace tool {

namespace {

class RulesCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        RefuseWords(words);
        if (session.IsJson()) {
            PrintAsJson(session);
        } else if (session.Options().format == "markdown") {
            session.Print(RulesAsMarkdown());
        } else {
            PrintTable(session);
        }
        return EXIT_DONE;
    }

private:
    static void PrintTable(Session& session)
    {
        TextTable table;
        table.AddColumn("RULE");
        table.AddColumn("LEVEL");
        table.AddColumn("GROUP");
        table.AddColumn("FINDS");
        for (const Rule* rule : Rules()) {
            table.AddRow({rule->id, std::string(LevelName(rule->level)), std::string(GroupTitle(rule->group)),
                          rule->summary});
        }
        session.Print(table.Render(session));
        if (!session.Options().isQuiet) {
            session.Print(
                fmt::format("{} rules; \"startplan explain RULE\" tells all about one\n", Rules().size()));
        }
    }

    static void PrintAsJson(Session& session)
    {
        Json json = JsonDocument("rules");
        json["rules"] = Json::array();
        for (const Rule* rule : Rules()) {
            json["rules"].push_back(RuleAsJson(*rule));
        }
        session.PrintJson(json);
    }
};

constexpr Description kRulesHelp = {
    "Every rule of \"startplan check\": its id, its level unless -W says otherwise, its group, and what it "
    "finds.",
    "0 done, 2 the work could not be done.",
    "startplan rules",
    "",
    "All about every rule, as a page in Markdown:\n\n"
    "    startplan rules -f markdown -o rules.md",
};

const CommandEntry
    kRulesEntry({"rules",
                 "",
                 "Every rule that the check knows",
                 kRulesHelp,
                 Section::ABOUT,
                 {"text", "json", "markdown"},
                 []() -> std::unique_ptr<Command> { return std::make_unique<RulesCommand>(); }});

} // namespace

} // namespace tool
