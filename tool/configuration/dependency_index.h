#ifndef STARTPLAN_TOOL_CONFIGURATION_DEPENDENCY_INDEX_H
#define STARTPLAN_TOOL_CONFIGURATION_DEPENDENCY_INDEX_H

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tool/configuration/configuration.h"
#include "tool/source/source_tree.h"

namespace tool {

// Who depends on whom, with the place of each dependency: the library's dependency table as it is before
// applications are dropped, with numbers for names. Of a name that several entries have, the last one
// counts. Refers to the configuration, which must stay as it is.
class DependencyIndex {
public:
    struct Dependency {
        std::size_t target = kNone;    // a name's number; kNone for a name that is not configured
        const NodeUse* item = nullptr; // in the "depends" list of the name's entry
    };
    struct Dependencies {
        const Dependency* data = nullptr;
        std::size_t size = 0;
        const Dependency* begin() const { return data; }
        const Dependency* end() const { return data + size; }
    };

    explicit DependencyIndex(const Configuration& configuration);

    // The names in ascending order; a name's number is its place.
    const std::vector<std::string_view>& Names() const { return names_; }
    // The number of a name, or kNone.
    std::size_t Find(std::string_view name) const;
    const SourceEntry& EntryOf(std::size_t name) const { return entries_[entryOfName_[name]]; }
    bool IsDropped(std::size_t name) const;

    // In the order of the list; of equal items the first one.
    Dependencies DependenciesOf(std::size_t name) const;
    std::string_view Text(std::size_t name, const Dependency& dependency) const;
    // The dependency of one name on another one, or null.
    const Dependency* FindDependency(std::size_t name, std::size_t target) const;
    // Who depends on the name, ascending.
    const std::vector<std::size_t>& DependantsOf(std::size_t name) const { return dependants_[name]; }

    std::size_t Size() const { return names_.size(); }
    std::size_t DependencyCount() const { return dependencies_.size(); }

private:
    void AddNames();
    void AddDependencies(std::size_t name);

    const Configuration& configuration_;
    const std::vector<SourceEntry>& entries_;
    std::vector<std::string_view> names_;
    std::unordered_map<std::string_view, std::size_t> numbers_;
    std::vector<std::size_t> entryOfName_;
    std::vector<Dependency> dependencies_; // of name 0, then of name 1, ...
    std::vector<std::size_t> begins_;      // where in dependencies_ each name's begin
    std::vector<std::size_t> lastSeenBy_;  // the last name for which a target was seen
    std::vector<std::vector<std::size_t>> dependants_;
};

} // namespace tool

#endif
