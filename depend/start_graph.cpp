#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <syslog.h>

#include "depend/name_set.h"
#include "depend/table_index.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"

std::uint32_t ParseAndDepend::GetStartGraphWithErrApp(const std::vector<std::string>& startAppNames,
                                                      DependGraph& graph,
                                                      std::vector<std::string>& errApps) const
{
    std::uint32_t result = 0;
    std::map<std::string, std::set<std::string>> collected;
    startplan::NameFinder finder(applicationDependsMap_, startAppNames.size());
    startplan::NameSet requested(startAppNames);
    // Of the names that have any. A name that is requested twice logs its lines twice.
    std::unordered_map<std::string_view, std::vector<const std::string*>> outsideOf;
    for (const std::string& name : startAppNames) {
        const startplan::TableEntry* entry = finder.Find(name);
        if (entry == nullptr) {
            syslog(LOG_ERR, "ParseAndDepend GetStartGraph %s is not in applicationDependsMap_", name.c_str());
            errApps.push_back(name);
            result = PARSE_ERR_DEPEND_NOT_FOUND;
            continue;
        }
        if (collected.try_emplace(name, entry->second).second) {
            std::vector<const std::string*> outside = requested.Missing(entry->second);
            if (!outside.empty()) {
                outsideOf.emplace(name, std::move(outside));
            }
        }
        const auto outside = outsideOf.find(name);
        if (outside == outsideOf.end()) {
            continue;
        }
        for (const std::string* dependency : outside->second) {
            syslog(LOG_WARNING, "ParseAndDepend GetStartGraph  %s depend  %s is not in startAppNames",
                   name.c_str(), dependency->c_str());
            collected.try_emplace(*dependency);
        }
    }

    graph.TakeOver(std::move(collected));
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
