#include "tool/configuration/dependency_index.h"

#include <algorithm>
#include <unordered_set>

namespace tool {

DependencyIndex::DependencyIndex(const Configuration& configuration)
    : configuration_(configuration), entries_(configuration.tree.Entries())
{
    AddNames();
    lastSeenBy_.assign(names_.size(), kNone);
    dependants_.resize(names_.size());
    begins_.reserve(names_.size() + 1);
    for (std::size_t name = 0; name < names_.size(); ++name) {
        begins_.push_back(dependencies_.size());
        AddDependencies(name);
    }
    begins_.push_back(dependencies_.size());
}

void DependencyIndex::AddNames()
{
    std::unordered_map<std::string_view, std::size_t> lastEntries;
    for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
        const EntryState state = configuration_.entryStates[entry];
        if (state == EntryState::KEPT || state == EntryState::DROPPED) {
            lastEntries[configuration_.tree.FileOf(entries_[entry]).Text(entries_[entry].key)] = entry;
        }
    }
    names_.reserve(lastEntries.size());
    for (const auto& [name, entry] : lastEntries) {
        names_.push_back(name);
    }
    std::sort(names_.begin(), names_.end());
    entryOfName_.reserve(names_.size());
    numbers_.reserve(names_.size());
    for (const std::string_view name : names_) {
        numbers_.emplace(name, entryOfName_.size());
        entryOfName_.push_back(lastEntries.at(name));
    }
}

void DependencyIndex::AddDependencies(std::size_t name)
{
    const SourceEntry& entry = EntryOf(name);
    const SourceFile& file = configuration_.tree.FileOf(entry);
    const NodeUse* list = file.Find(entry.value, "depends");
    if (list == nullptr) {
        return;
    }
    std::unordered_set<std::string_view> missing;
    for (const NodeUse& item : file.Items(*list)) {
        const std::string_view text = file.Text(item);
        const std::size_t target = Find(text);
        if (target == kNone) {
            if (missing.insert(text).second) {
                dependencies_.push_back({kNone, &item});
            }
        } else if (lastSeenBy_[target] != name) {
            lastSeenBy_[target] = name;
            dependencies_.push_back({target, &item});
            dependants_[target].push_back(name);
        }
    }
}

std::size_t DependencyIndex::Find(std::string_view name) const
{
    const auto found = numbers_.find(name);
    return found == numbers_.end() ? kNone : found->second;
}

bool DependencyIndex::IsDropped(std::size_t name) const
{
    return configuration_.entryStates[entryOfName_[name]] == EntryState::DROPPED;
}

DependencyIndex::Dependencies DependencyIndex::DependenciesOf(std::size_t name) const
{
    return {dependencies_.data() + begins_[name], begins_[name + 1] - begins_[name]};
}

std::string_view DependencyIndex::Text(std::size_t name, const Dependency& dependency) const
{
    return configuration_.tree.FileOf(EntryOf(name)).Text(*dependency.item);
}

const DependencyIndex::Dependency* DependencyIndex::FindDependency(std::size_t name, std::size_t target) const
{
    const Dependencies dependencies = DependenciesOf(name);
    const auto* found =
        std::find_if(dependencies.begin(), dependencies.end(),
                     [target](const Dependency& dependency) { return dependency.target == target; });
    return found == dependencies.end() ? nullptr : found;
}

} // namespace tool
