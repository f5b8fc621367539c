#ifndef STARTPLAN_TESTS_SUPPORT_PLAIN_GRAPH_BUILDERS_H
#define STARTPLAN_TESTS_SUPPORT_PLAIN_GRAPH_BUILDERS_H

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <syslog.h>

#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_depend_graph.h"
#include "tests/support/plain_patterns.h"

namespace test_support {

// What one request gives, besides the graph.
struct PlainBuild {
    std::uint32_t result = 0;
    std::vector<std::string> errApps;
    GraphInput collected; // what the graph was filled with, also where it was cleared afterwards
};

// The graph builders of ParseAndDepend by plain walks over the table. The table must be the library's own
// (GetApplicationDependsMap()), not a copy, so that both walk it in the same order. The graph has to log
// to the same lines, which come out in the library's order.
class PlainGraphBuilders {
public:
    PlainGraphBuilders(const ParseAndDepend::DependsMap& table, Lines& log)
        : table_(table), patterns_(log), log_(log)
    {}

    const ParseAndDepend::DependsMap::value_type* Find(const std::string& name) const
    {
        for (const auto& entry : table_) {
            if (patterns_.IsDynamicParaMatch(entry.first, name)) {
                return &entry;
            }
        }
        return nullptr;
    }

    PlainBuild Start(const std::vector<std::string>& names, PlainDependGraph& graph) const
    {
        PlainBuild build;
        for (const std::string& name : names) {
            const auto* entry = Find(name);
            if (entry == nullptr) {
                Refuse("GetStartGraph", name, build);
                continue;
            }
            build.collected.insert({name, entry->second});
            for (const std::string& dependency : entry->second) {
                if (Contains(names, dependency)) {
                    continue;
                }
                Log(LOG_WARNING, "ParseAndDepend GetStartGraph  " + name + " depend  " + dependency +
                                     " is not in startAppNames");
                build.collected.insert({dependency, {}});
            }
        }
        Fill("GetStartGraph", graph, build);
        return build;
    }

    PlainBuild Term(const std::vector<std::string>& names, PlainDependGraph& graph) const
    {
        PlainBuild build;
        for (const std::string& name : names) {
            if (Find(name) == nullptr) {
                Refuse("GetTermGraph", name, build);
                continue;
            }
            build.collected.insert({name, {}});
            for (const auto& [app, depends] : table_) {
                if (depends.count(name) == 0) {
                    continue;
                }
                if (Contains(names, app)) {
                    build.collected[name].insert(app);
                } else {
                    Log(LOG_WARNING, "ParseAndDepend GetTermGraph " + app + " is not in termAppNames");
                }
            }
        }
        Fill("GetTermGraph", graph, build);
        return build;
    }

private:
    static bool Contains(const std::vector<std::string>& names, const std::string& name)
    {
        return std::find(names.begin(), names.end(), name) != names.end();
    }

    void Refuse(const std::string& builder, const std::string& name, PlainBuild& build) const
    {
        Log(LOG_ERR, "ParseAndDepend " + builder + " " + name + " is not in applicationDependsMap_");
        build.errApps.push_back(name);
        build.result = PARSE_ERR_DEPEND_NOT_FOUND;
    }

    void Fill(const std::string& builder, PlainDependGraph& graph, PlainBuild& build) const
    {
        graph.Update(build.collected);
        if (graph.HasCycle()) {
            graph.Clear();
            Log(LOG_ERR, "ParseAndDepend " + builder + ": the graph has cycle !");
            build.result = PARSE_ERR_GRAPH_CYCLE;
        }
    }

    void Log(int priority, const std::string& text) const { log_.push_back({priority, text, {}}); }

    const ParseAndDepend::DependsMap& table_;
    PlainPatterns patterns_;
    Lines& log_;
};

} // namespace test_support

#endif
