#ifndef STARTPLAN_TOOL_FINDINGS_RULE_PAGE_H
#define STARTPLAN_TOOL_FINDINGS_RULE_PAGE_H

#include <string>

#include "tool/command_line/session.h"
#include "tool/rules/rule.h"

namespace tool {

// One rule for the terminal: text, example, effect, fix.
std::string ExplainRule(const Session& session, const Rule& rule);

Json RuleAsJson(const Rule& rule);

// All rules as the page of the manual, docs/rules.md.
std::string RulesAsMarkdown();

} // namespace tool

#endif
