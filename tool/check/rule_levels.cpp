#include "tool/check/rule_levels.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

#include "tool/rules/rules.h"
#include "tool/text/failure.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

std::string GroupName(RuleGroup group)
{
    std::string name(GroupTitle(group));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return c == ' ' ? '-' : static_cast<char>(std::tolower(c)); });
    return name;
}

std::vector<const Rule*> RulesNamed(const std::string& name)
{
    std::vector<const Rule*> named;
    std::vector<std::string> known = RuleIds();
    for (const Rule* rule : Rules()) {
        const std::string group = GroupName(rule->group);
        if (rule->id == name || group == name) {
            named.push_back(rule);
        }
        known.push_back(group);
    }
    if (named.empty()) {
        throw UsageFailure(fmt::format("no rule \"{}\"{}", name, DidYouMean(name, known)));
    }
    return named;
}

// "a,b" and "a b".
std::vector<const Rule*> RulesInList(const std::string& list)
{
    std::vector<const Rule*> rules;
    std::size_t at = 0;
    while ((at = list.find_first_not_of(", ", at)) != std::string::npos) {
        const std::size_t end = std::min(list.find_first_of(", ", at), list.size());
        const std::vector<const Rule*> named = RulesNamed(list.substr(at, end - at));
        rules.insert(rules.end(), named.begin(), named.end());
        at = end;
    }
    if (rules.empty()) {
        throw UsageFailure("which rules? \"startplan rules\" lists them");
    }
    return rules;
}

} // namespace

void RuleLevels::Set(const std::string& ruleAndLevel)
{
    const std::size_t equals = ruleAndLevel.find('=');
    if (equals == std::string::npos) {
        throw UsageFailure(fmt::format("-W {}: write RULE=LEVEL", ruleAndLevel));
    }
    const std::string name = ruleAndLevel.substr(equals + 1);
    const auto level = ParseLevel(name);
    if (!level) {
        throw UsageFailure(fmt::format("no level \"{}\" (there is off, note, warning, error){}", name,
                                       DidYouMean(name, {"off", "note", "warning", "error"})));
    }
    for (const Rule* rule : RulesInList(ruleAndLevel.substr(0, equals))) {
        levels_[rule] = *level;
    }
}

void RuleLevels::Select(const std::string& rules)
{
    for (const Rule* rule : RulesInList(rules)) {
        isSelected_[rule] = true;
    }
}

void RuleLevels::Ignore(const std::string& rules)
{
    for (const Rule* rule : RulesInList(rules)) {
        isIgnored_[rule] = true;
    }
}

Level RuleLevels::Of(const Rule& rule) const
{
    if (isIgnored_.count(&rule) != 0 || (!isSelected_.empty() && isSelected_.count(&rule) == 0)) {
        return Level::OFF;
    }
    const auto level = levels_.find(&rule);
    return level == levels_.end() ? rule.level : level->second;
}

Level RuleLevels::Of(const Finding& finding) const
{
    const Level level = Of(*finding.rule);
    const bool isAskedFor = level == Level::OFF || levels_.count(finding.rule) != 0;
    return isAskedFor ? level : std::max(level, finding.least);
}

void RuleLevels::Apply(std::vector<Finding>& findings) const
{
    for (Finding& finding : findings) {
        finding.level = Of(finding);
    }
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                                  [](const Finding& finding) { return finding.level == Level::OFF; }),
                   findings.end());
}

Level ParseFailLevel(const std::string& name)
{
    const auto level = name == "never" ? Level::OFF : ParseLevel(name).value_or(Level::OFF);
    if (level == Level::OFF && name != "never") {
        throw UsageFailure(fmt::format("--fail-level {}: write note, warning, error or never{}", name,
                                       DidYouMean(name, {"note", "warning", "error", "never"})));
    }
    return level;
}

} // namespace tool
