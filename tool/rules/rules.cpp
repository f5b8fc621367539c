#include "tool/rules/rules.h"

#include <algorithm>
#include <tuple>

#include "tool/rules/rules_accounts.h"
#include "tool/rules/rules_check.h"
#include "tool/rules/rules_dependencies.h"
#include "tool/rules/rules_entries.h"
#include "tool/rules/rules_patterns.h"
#include "tool/rules/rules_requests.h"
#include "tool/rules/rules_tree.h"
#include "tool/rules/rules_values.h"

namespace tool {

namespace {

std::vector<const Rule*> JoinRules()
{
    std::vector<const Rule*> all;
    for (const auto& group : {TreeRules(), EntryRules(), ValueRules(), AccountRules(), DependencyRules(),
                              PatternRules(), RequestRules(), CheckRules()}) {
        all.insert(all.end(), group.begin(), group.end());
    }
    std::sort(all.begin(), all.end(), [](const Rule* a, const Rule* b) {
        return std::make_tuple(a->group, std::string_view(a->id)) <
               std::make_tuple(b->group, std::string_view(b->id));
    });
    return all;
}

} // namespace

const std::vector<const Rule*>& Rules()
{
    static const std::vector<const Rule*> kRules = JoinRules();
    return kRules;
}

const Rule* FindRule(std::string_view id)
{
    for (const Rule* rule : Rules()) {
        if (rule->id == id) {
            return rule;
        }
    }
    return nullptr;
}

std::vector<std::string> RuleIds()
{
    std::vector<std::string> ids;
    for (const Rule* rule : Rules()) {
        ids.emplace_back(rule->id);
    }
    return ids;
}

} // namespace tool
