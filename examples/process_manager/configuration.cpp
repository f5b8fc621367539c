#include "configuration.h"

#include <algorithm>
#include <set>

#include <startplan/result_codes.h>

#include "log.h"

bool Configuration::Load(const std::string& topPath, const std::string& replacePath)
{
    std::map<std::string, std::string> replaceData;
    if (!replacePath.empty() && library_.ParseToReplaceData(PARAM_TYPE_YAML, replacePath, replaceData) != 0) {
        Log("error", replacePath, "cannot be read as replace data; the system log says why");
        return false;
    }
    // Without a value for the empty name the library would never be done with a path that holds "${}".
    replaceData.emplace("", "");
    const std::uint32_t code = library_.ParseYaml(PARAM_TYPE_YAML, topPath, apps_, replaceData);
    if (code != 0 && code != PARSE_ERR_DEPEND_NOT_FOUND) {
        Log("error", topPath, "cannot be read; the system log says why");
        return false;
    }
    if (code == PARSE_ERR_DEPEND_NOT_FOUND) {
        Log("warning", topPath, "what has unknown dependencies was dropped; the system log names it");
    }
    for (const ApplicationManifest& app : apps_) {
        byName_[app.GetAppName()] = &app;
    }
    return true;
}

Names Configuration::All() const
{
    Names names;
    for (const auto& [name, app] : byName_) {
        if (!IsFamily(name)) {
            names.push_back(name);
        }
    }
    return names;
}

const ApplicationManifest* Configuration::Find(const std::string& name) const
{
    if (IsFamily(name)) {
        return nullptr;
    }
    const auto own = byName_.find(name);
    if (own != byName_.end()) {
        return own->second;
    }
    const auto match = library_.GetAppFromDependsMap(name);
    // A plain key also matches every longer name; such a name is no application.
    const bool isMember = match != library_.GetApplicationDependsMap().end() && IsFamily(match->first);
    return isMember ? byName_.at(match->first) : nullptr;
}

Names Configuration::WithNeeded(const Names& names) const
{
    Names all = names;
    std::set<std::string> seen(names.begin(), names.end());
    for (std::size_t i = 0; i < all.size(); ++i) { // `all` grows
        for (const std::string& needed : Find(all[i])->GetDependList()) {
            if (Find(needed) != nullptr && seen.insert(needed).second) {
                all.push_back(needed);
            }
        }
    }
    return all;
}

Names Configuration::WithDependants(const Names& names, const Names& among) const
{
    const ParseAndDepend::DependsMap table = TableOf(among);
    std::set<std::string> found(names.begin(), names.end());
    const auto isFound = [&found](const std::string& name) { return found.count(name) != 0; };
    for (std::size_t before = 0; before < found.size();) { // until a round finds nothing more
        before = found.size();
        for (const auto& [name, needed] : table) {
            if (std::any_of(needed.begin(), needed.end(), isFound)) {
                found.insert(name);
            }
        }
    }
    return {found.begin(), found.end()};
}

bool Configuration::StartGraph(const Names& names, DependGraph& graph) const
{
    return library_.GetStartGraph(names, graph) == 0;
}

bool Configuration::StopGraph(const Names& names, DependGraph& graph) const
{
    // A termination graph compares names exactly: what needs a family is not seen to need its members.
    ParseAndDepend members;
    members.SetApplicationDependsMap(TableOf(names));
    return members.GetTermGraph(names, graph) == 0;
}

// What each of the names needs, as its entry says; those of the names that belong to a family that it needs
// stand beside the family.
ParseAndDepend::DependsMap Configuration::TableOf(const Names& names) const
{
    std::map<std::string, std::set<std::string>> byEntry;
    for (const std::string& name : names) {
        byEntry[Find(name)->GetAppName()].insert(name);
    }
    ParseAndDepend::DependsMap table;
    for (const std::string& name : names) {
        const std::set<std::string>& needed = Find(name)->GetDependList();
        table[name] = needed;
        for (const std::string& entry : needed) {
            table[name].insert(byEntry[entry].begin(), byEntry[entry].end());
        }
    }
    return table;
}
