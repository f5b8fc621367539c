#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_CONFIGURATION_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_CONFIGURATION_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include <startplan/application_manifest.h>
#include <startplan/depend_graph.h>
#include <startplan/parse_and_depend.h>

// What the library has read, and the questions that a process manager asks of it. Does not change once
// loaded; threads may share it.
//
// An entry whose name is a pattern, such as camera_<0-3>, stands for a family. Its members, camera_2 for
// example, are started and stopped one by one and under their own names; the family itself never is.
class Configuration {
public:
    // Reads the files. False, with the reason logged, where nothing can be started. `replacePath` may be
    // empty.
    bool Load(const std::string& topPath, const std::string& replacePath);

    // Every application that is no pattern.
    std::vector<std::string> Names() const;

    // The entry by which an application runs: its own, or its family's. Null for a name that cannot be
    // started: one that is not configured, or a pattern.
    const ApplicationManifest* Find(const std::string& name) const;

    // `names`, and what they need, directly or not.
    std::vector<std::string> WithNeeded(const std::vector<std::string>& names) const;

    // Those of `among` that need one of `names`, directly or not. Who needs a family needs each member.
    std::vector<std::string> Dependants(const std::vector<std::string>& names,
                                        const std::vector<std::string>& among) const;

    // The graph for starting `names`: 0 or PARSE_ERR_GRAPH_CYCLE.
    std::uint32_t StartGraph(const std::vector<std::string>& names, DependGraph& graph) const;

    // The graph for stopping `names`, which run: 0 or PARSE_ERR_GRAPH_CYCLE.
    std::uint32_t StopGraph(const std::vector<std::string>& names, DependGraph& graph) const;

private:
    ParseAndDepend library_;
    std::vector<ApplicationManifest> apps_;
    std::map<std::string, const ApplicationManifest*> byName_; // of entries with the same name the last
};

#endif
