#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <syslog.h>

#include "depend/table_index.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"

namespace {

std::vector<const std::string*> NotRequested(const std::set<std::string>& names,
                                             const startplan::RequestedNames& requested)
{
    std::vector<const std::string*> outside;
    for (const std::string& name : names) {
        if (!requested.Contains(name)) {
            outside.push_back(&name);
        }
    }
    return outside;
}

} // namespace

std::uint32_t ParseAndDepend::GetStartGraphWithErrApp(const std::vector<std::string>& startAppNames,
                                                      DependGraph& graph,
                                                      std::vector<std::string>& errApps) const
{
    std::uint32_t result = 0;
    std::map<std::string, std::set<std::string>> collected;
    startplan::NameFinder finder(applicationDependsMap_, startAppNames.size());
    const startplan::RequestedNames requested(startAppNames);
    std::unordered_map<std::string_view, std::vector<const std::string*>> outsideOf;
    for (const std::string& name : startAppNames) {
        const startplan::TableEntry* entry = finder.Find(name);
        if (entry == nullptr) {
            syslog(LOG_ERR, "ParseAndDepend GetStartGraph %s is not in applicationDependsMap_", name.c_str());
            errApps.push_back(name);
            result = PARSE_ERR_DEPEND_NOT_FOUND;
            continue;
        }
        const auto [outside, isNew] = outsideOf.try_emplace(name);
        if (isNew) { // else the name is requested twice, and logs twice what follows
            collected.try_emplace(name, entry->second);
            outside->second = NotRequested(entry->second, requested);
        }
        for (const std::string* dependency : outside->second) {
            syslog(LOG_WARNING, "ParseAndDepend GetStartGraph  %s depend  %s is not in startAppNames",
                   name.c_str(), dependency->c_str());
            collected.try_emplace(*dependency);
        }
    }

    graph.Update(collected);
    if (graph.HasCycle()) {
        graph.Clear();
        syslog(LOG_ERR, "ParseAndDepend GetStartGraph: the graph has cycle !");
        result = PARSE_ERR_GRAPH_CYCLE;
    }
    return result;
}

std::uint32_t ParseAndDepend::GetStartGraph(const std::vector<std::string>& startAppNames,
                                            DependGraph& graph) const
{
    std::vector<std::string> errApps;
    return GetStartGraphWithErrApp(startAppNames, graph, errApps);
}
