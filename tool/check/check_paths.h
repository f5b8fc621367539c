#ifndef STARTPLAN_TOOL_CHECK_CHECK_PATHS_H
#define STARTPLAN_TOOL_CHECK_CHECK_PATHS_H

#include <cstddef>
#include <map>
#include <string>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/source/placeholders.h"

namespace tool {

// Checks the paths by which files are named: their placeholders, and whether the library opens them.
class PathCheck {
public:
    PathCheck(const Configuration& configuration, Findings& findings)
        : configuration_(configuration), tree_(configuration.tree), findings_(findings)
    {}

    // True if the path explains why nothing is read from the visit's file.
    bool Check(std::size_t visit);
    // To be called once, behind the last path.
    void Finish();

private:
    bool CheckSubStartup(const Visit& visit);
    bool CheckPlaceholders(const Visit& visit, bool isLoaded);
    void AddUnknown(const Visit& visit, const Placeholder& placeholder);
    void AddRefused(const Visit& visit);
    Finding At(const Visit& visit, const Rule& rule) const;
    Finding At(const Visit& visit, const Placeholder& placeholder, const Rule& rule) const;
    std::string TextOf(const Visit& visit) const;

    const Configuration& configuration_;
    const SourceTree& tree_;
    Findings& findings_;
    std::map<std::string, Finding> unknown_; // by name: where replace data are forgotten, each path has one
};

} // namespace tool

#endif
