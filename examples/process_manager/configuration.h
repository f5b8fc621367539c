#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_CONFIGURATION_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_CONFIGURATION_H

#include <map>
#include <string>
#include <vector>

#include <startplan/application_manifest.h>
#include <startplan/depend_graph.h>
#include <startplan/parse_and_depend.h>

using Names = std::vector<std::string>;

// What the library has read, and the questions that a process manager asks of it. Does not change once
// loaded; threads may share it.
//
// An entry whose name is a pattern, such as camera_<0-3>, stands for a family. Its members, camera_2 for
// example, are started and stopped one by one and under their own names; the family itself never is.
class Configuration {
public:
    // False, with the reason logged, where nothing can be started. `replacePath` may be empty.
    bool Load(const std::string& topPath, const std::string& replacePath);

    // Every application that is no family.
    Names All() const;
    bool IsFamily(const std::string& name) const { return library_.IsDynamicPara(name); }
    // The entry by which an application runs: its own, or its family's. Null for a name that cannot be
    // started: one that is not configured, or a family.
    const ApplicationManifest* Find(const std::string& name) const;

    // `names`, and what they need, directly or not.
    Names WithNeeded(const Names& names) const;
    // `names`, and those of `among` that need one of them, directly or not.
    Names WithDependants(const Names& names, const Names& among) const;

    // Fill the graph for starting or for stopping `names`; false where that is impossible, for a cycle. The
    // families that are needed are vertices of the start graph.
    bool StartGraph(const Names& names, DependGraph& graph) const;
    bool StopGraph(const Names& names, DependGraph& graph) const;

private:
    ParseAndDepend::DependsMap TableOf(const Names& names) const;

    ParseAndDepend library_;
    std::vector<ApplicationManifest> apps_;
    std::map<std::string, const ApplicationManifest*> byName_; // of entries with the same name the last
};

#endif
