#include "configuration.h"

#include <cstdio>

#include <startplan/result_codes.h>

#include "log.h"

namespace {

std::string Hex(std::uint32_t code)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", code);
    return text;
}

} // namespace

bool Configuration::Load(const std::string& topPath, const std::string& replacePath)
{
    std::map<std::string, std::string> replaceData;
    if (!replacePath.empty() && library_.ParseToReplaceData(PARAM_TYPE_YAML, replacePath, replaceData) != 0) {
        LogError(replacePath, "cannot be read as replace data; the system log says why");
        return false;
    }
    // Without a value for the empty name the library would never be done with a path that holds "${}".
    replaceData.emplace("", "");
    const std::uint32_t code = library_.ParseYaml(PARAM_TYPE_YAML, topPath, apps_, replaceData);
    if (code != 0 && code != PARSE_ERR_DEPEND_NOT_FOUND) {
        LogError(topPath, "cannot be read, result " + Hex(code) + "; the system log says why");
        return false;
    }
    if (code == PARSE_ERR_DEPEND_NOT_FOUND) {
        LogWarning(topPath, "applications with unknown dependencies were dropped; the system log names them");
    }
    for (const ApplicationManifest& app : apps_) {
        byName_[app.GetAppName()] = &app;
    }
    for (const std::string& name : Names()) {
        const auto found = library_.GetAppFromDependsMap(name);
        if (found != library_.GetApplicationDependsMap().end() && found->first != name) {
            LogWarning(name, "is started after what " + found->first + " needs, whose name matches it too");
        }
    }
    return true;
}

std::vector<std::string> Configuration::Names() const
{
    std::vector<std::string> names;
    for (const auto& [name, app] : byName_) {
        if (!library_.IsDynamicPara(name)) {
            names.push_back(name);
        }
    }
    return names;
}

const ApplicationManifest* Configuration::Find(const std::string& name) const
{
    if (library_.IsDynamicPara(name)) {
        return nullptr;
    }
    const auto own = byName_.find(name);
    if (own != byName_.end()) {
        return own->second;
    }
    const auto match = library_.GetAppFromDependsMap(name);
    // A plain key also matches every longer name; such a name is no application.
    const bool isMember =
        match != library_.GetApplicationDependsMap().end() && library_.IsDynamicPara(match->first);
    return isMember ? byName_.at(match->first) : nullptr;
}

std::vector<std::string> Configuration::WithNeeded(const std::vector<std::string>& names) const
{
    std::vector<std::string> all = names;
    std::set<std::string> seen(names.begin(), names.end());
    for (std::size_t i = 0; i < all.size(); ++i) { // `all` grows
        const std::set<std::string> needed = Find(all[i])->GetDependList();
        for (const std::string& name : needed) {
            if (Find(name) != nullptr && seen.insert(name).second) {
                all.push_back(name);
            }
        }
    }
    return all;
}

std::vector<std::string> Configuration::Dependants(const std::vector<std::string>& names,
                                                   const std::vector<std::string>& among) const
{
    std::map<std::string, std::vector<std::string>> needing; // what is needed, as written in the entries
    for (const std::string& name : among) {
        for (const std::string& needed : Find(name)->GetDependList()) {
            needing[needed].push_back(name);
        }
    }
    std::vector<std::string> reached = names;
    std::set<std::string> seen(names.begin(), names.end());
    for (std::size_t i = 0; i < reached.size(); ++i) { // `reached` grows
        const ApplicationManifest* entry = Find(reached[i]);
        for (const std::string& needed : {reached[i], entry != nullptr ? entry->GetAppName() : ""}) {
            for (const std::string& name : needing[needed]) {
                if (seen.insert(name).second) {
                    reached.push_back(name);
                }
            }
        }
    }
    return {reached.begin() + static_cast<std::ptrdiff_t>(names.size()), reached.end()};
}

std::uint32_t Configuration::StartGraph(const std::vector<std::string>& names, DependGraph& graph) const
{
    return library_.GetStartGraph(names, graph);
}

std::uint32_t Configuration::StopGraph(const std::vector<std::string>& names, DependGraph& graph) const
{
    // A termination graph compares names exactly, so the table for it holds the members that run instead of
    // the families.
    std::map<std::string, std::set<std::string>> running; // by the name of the entry
    for (const std::string& name : names) {
        running[Find(name)->GetAppName()].insert(name);
    }
    ParseAndDepend::DependsMap table;
    for (const std::string& name : names) {
        for (const std::string& needed : Find(name)->GetDependList()) {
            table[name].insert(running[needed].begin(), running[needed].end());
        }
        table[name]; // also those that need nothing
    }
    ParseAndDepend members;
    members.SetApplicationDependsMap(table);
    return members.GetTermGraph(names, graph);
}
