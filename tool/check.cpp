#include "tool/check.h"

#include <algorithm>

#include "tool/check_dependencies.h"
#include "tool/check_entries.h"
#include "tool/check_patterns.h"
#include "tool/check_tree.h"
#include "tool/check_values.h"
#include "tool/printable.h"
#include "tool/rules_check.h"

namespace tool {

namespace {

void AddRefusals(const Configuration& configuration, Findings& findings)
{
    for (const Refusal& refusal : configuration.refusals) {
        findings.Add(
            {&kRefusedInput, refusal.position, 0, refusal.visit, Printable(refusal.reason), "", "", {}});
    }
}

} // namespace

std::size_t CheckResult::Count(Level level) const
{
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [level](const Finding& finding) { return finding.level == level; }));
}

std::vector<Finding> Check(const Configuration& configuration, const std::vector<RequestToCheck>& requests)
{
    Findings findings;
    if (!configuration.WasRead()) {
        AddRefusals(configuration, findings);
        return findings.TakeSorted();
    }
    CheckTree(configuration, findings);
    CheckEntries(configuration, findings);
    CheckValues(configuration, findings);
    CheckDependencies(configuration, findings);
    CheckPatterns(configuration, findings);
    CheckRequests(configuration, requests, findings);
    return findings.TakeSorted();
}

} // namespace tool
