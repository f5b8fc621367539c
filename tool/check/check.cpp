#include "tool/check/check.h"

#include <algorithm>

#include "tool/check/check_accounts.h"
#include "tool/check/check_dependencies.h"
#include "tool/check/check_entries.h"
#include "tool/check/check_patterns.h"
#include "tool/check/check_tree.h"
#include "tool/check/check_values.h"
#include "tool/check/hide_ignored.h"
#include "tool/rules/rules_check.h"
#include "tool/rules/rules_tree.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

Finding FindingOf(const Refusal& refusal)
{
    if (refusal.kind == RefusalKind::EMPTY_PLACEHOLDER) {
        return {&kEmptyPlaceholder,
                refusal.position,
                0,
                refusal.visit,
                "\"${}\" has no name",
                "the library tries to replace it for ever: the device hangs while it reads its configuration",
                "write the placeholder's name between the braces",
                {}};
    }
    return {&kRefusedInput,
            refusal.position,
            0,
            refusal.visit,
            Printable(refusal.reason),
            "reading it would take the library hours or all memory, so this command does not let it",
            "take this out, or make it smaller",
            {}};
}

void AddRefusals(const Configuration& configuration, Findings& findings)
{
    for (const Refusal& refusal : configuration.refusals) {
        findings.Add(FindingOf(refusal));
    }
}

} // namespace

std::size_t CheckResult::Count(Level level) const
{
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [level](const Finding& finding) { return finding.level == level; }));
}

CheckResult Check(const Configuration& configuration, const std::vector<RequestToCheck>& requests,
                  const RuleLevels& levels)
{
    CheckResult result{configuration, {}};
    Findings findings;
    if (!configuration.WasRead()) {
        AddRefusals(configuration, findings);
        result.findings = findings.TakeSorted();
        RuleLevels().Apply(result.findings);
        return result;
    }
    CheckTree(configuration, findings);
    CheckEntries(configuration, findings);
    CheckValues(configuration, findings);
    CheckAccounts(configuration, findings);
    CheckDependencies(configuration, findings);
    CheckPatterns(configuration, findings);
    CheckRequests(configuration, requests, findings);
    result.findings = findings.TakeSorted();
    levels.Apply(result.findings);
    result.ignored = HideIgnored(configuration, levels, result.findings);
    levels.Apply(result.findings);
    SortFindings(result.findings);
    return result;
}

} // namespace tool
