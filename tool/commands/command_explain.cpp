#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/findings/rule_page.h"
#include "tool/rules/rules.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

class ExplainCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        if (words.empty()) {
            throw UsageFailure("which rule? \"startplan rules\" lists them");
        }
        std::vector<const Rule*> rules;
        for (const std::string& word : words) {
            if (const Rule* rule = FindRule(word)) {
                rules.push_back(rule);
                continue;
            }
            session.Error(fmt::format("no rule \"{}\"{}", Printable(word), DidYouMean(word, RuleIds())));
        }
        Print(session, rules);
        return rules.size() == words.size() ? EXIT_DONE : EXIT_FINDINGS;
    }

private:
    static void Print(Session& session, const std::vector<const Rule*>& rules)
    {
        if (session.IsJson()) {
            Json json = JsonDocument("explain");
            json["rules"] = Json::array();
            for (const Rule* rule : rules) {
                json["rules"].push_back(RuleAsJson(*rule));
            }
            session.PrintJson(json);
            return;
        }
        for (const Rule* rule : rules) {
            session.Print(rule == rules.front() ? "" : "\n\n");
            session.Print(ExplainRule(session, *rule));
        }
    }
};

constexpr Description kExplainHelp = {
    "When the rule finds something, an example, what the device does, and how to mend it. RULE stands in\n"
    "brackets behind every finding; \"startplan rules\" lists them all.",
    "0 done, 1 there is no such rule, 2 the work could not be done.",
    "startplan explain unknown-placeholder",
    "",
    "Two rules for a program:\n\n"
    "    startplan explain -f json cycle stall",
};

const CommandEntry
    kExplainEntry({"explain",
                   "RULE...",
                   "All about one rule of the check",
                   kExplainHelp,
                   Section::ABOUT,
                   {"text", "json"},
                   []() -> std::unique_ptr<Command> { return std::make_unique<ExplainCommand>(); }});

} // namespace

} // namespace tool
