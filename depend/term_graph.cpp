#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <syslog.h>

#include "depend/table_index.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"

std::uint32_t ParseAndDepend::GetTermGraphWithErrApp(const std::vector<std::string>& termAppNames,
                                                     DependGraph& graph,
                                                     std::vector<std::string>& errApps) const
{
    std::uint32_t result = 0;
    std::map<std::string, std::set<std::string>> collected;
    startplan::NameFinder finder(applicationDependsMap_, termAppNames.size());
    const startplan::DependantFinder finderOfDependants(applicationDependsMap_, termAppNames);
    for (const std::string& name : termAppNames) {
        if (finder.Find(name) == nullptr) {
            syslog(LOG_ERR, "ParseAndDepend GetTermGraph %s is not in applicationDependsMap_", name.c_str());
            errApps.push_back(name);
            result = PARSE_ERR_DEPEND_NOT_FOUND;
            continue;
        }
        const auto [vertex, isNew] = collected.try_emplace(name); // not new: the name is requested twice
        for (const auto& dependant : finderOfDependants.Find(name)) {
            if (!dependant.isRequested) {
                syslog(LOG_WARNING, "ParseAndDepend GetTermGraph %s is not in termAppNames",
                       dependant.name->c_str());
            } else if (isNew) {
                vertex->second.insert(*dependant.name);
            }
        }
    }

    graph.TakeOver(std::move(collected));
    if (graph.HasCycle()) {
        graph.Clear();
        syslog(LOG_ERR, "ParseAndDepend GetTermGraph: the graph has cycle !");
        result = PARSE_ERR_GRAPH_CYCLE;
    }
    return result;
}

std::uint32_t ParseAndDepend::GetTermGraph(const std::vector<std::string>& termAppNames,
                                           DependGraph& graph) const
{
    std::vector<std::string> errApps;
    return GetTermGraphWithErrApp(termAppNames, graph, errApps);
}
