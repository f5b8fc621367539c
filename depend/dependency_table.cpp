#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include <syslog.h>

#include "depend/name_patterns.h"
#include "depend/name_set.h"
#include "depend/table_index.h"
#include "startplan/application_manifest.h"
#include "startplan/parse_and_depend.h"
#include "startplan/parser.h"
#include "startplan/result_codes.h"

namespace {

using ProcMgr::Parser;
using startplan::DependsMap;
using startplan::NameSet;

std::shared_ptr<Parser> MakeParser(ParamType paraType)
{
    std::shared_ptr<Parser> parser = ProcMgr::ParseFactory::CreateParser(paraType);
    if (parser == nullptr) {
        syslog(LOG_ERR, "CreateParser failed parser is nullptr. paraType:%u",
               static_cast<unsigned>(paraType));
    }
    return parser;
}

using DependList = std::set<std::string>;

// Enters the name of every record, and returns for each the place of its dependencies.
std::vector<DependList*> EnterNames(const std::vector<ApplicationManifest>& apps, DependsMap& table)
{
    std::vector<DependList*> places;
    places.reserve(apps.size());
    for (const ApplicationManifest& app : apps) {
        const auto [entry, isNew] = table.try_emplace(app.GetAppName());
        if (!isNew) {
            syslog(LOG_WARNING, "InitApplicationsAndDepend applicationDependsMap key: %s  will be covered !",
                   app.GetAppName().c_str());
        }
        places.push_back(&entry->second);
    }
    return places;
}

// By name, the missing dependencies of the records that have any.
using Incomplete = std::unordered_map<std::string_view, std::vector<const std::string*>>;

// Copies the dependencies of every record to its place, but for those of the incomplete ones, whose entries
// will be dropped. The last record of a name counts.
Incomplete EnterDependencies(const std::vector<ApplicationManifest>& apps,
                             const std::vector<DependList*>& places, NameSet& keys)
{
    Incomplete incomplete;
    for (std::size_t i = 0; i < apps.size(); ++i) {
        std::vector<const std::string*> missing = keys.Missing(apps[i].GetDependList());
        if (missing.empty()) {
            *places[i] = apps[i].GetDependList();
            incomplete.erase(apps[i].GetAppName());
        } else {
            incomplete.insert_or_assign(apps[i].GetAppName(), std::move(missing));
        }
    }
    return incomplete;
}

// The entries that depend on a name that is no key, in the table's order. Every such dependency is logged.
std::vector<DependsMap::const_iterator> LogIncomplete(const DependsMap& table, const Incomplete& incomplete,
                                                      NameSet& keys)
{
    std::vector<DependsMap::const_iterator> found;
    std::vector<const std::string*> missingOfOlder;
    for (auto entry = table.begin(); entry != table.end(); ++entry) {
        const auto known = incomplete.find(entry->first);
        if (known == incomplete.end()) {
            missingOfOlder = keys.Missing(entry->second); // it may be older than this call
        }
        const auto& missing = known == incomplete.end() ? missingOfOlder : known->second;
        for (const std::string* dependency : missing) {
            syslog(LOG_ERR, "CheckApplicationsAndDepend error: app: %s depends: %s not in appList",
                   entry->first.c_str(), dependency->c_str());
        }
        if (!missing.empty()) {
            found.push_back(entry);
        }
    }
    return found;
}

void Drop(const std::vector<DependsMap::const_iterator>& entries, std::vector<ApplicationManifest>& apps,
          DependsMap& table)
{
    std::unordered_set<std::string_view> dropped;
    dropped.reserve(entries.size());
    for (const DependsMap::const_iterator& entry : entries) {
        dropped.insert(entry->first);
    }
    // Records are moved to a new vector, since they cannot be assigned to each other in the old one.
    std::vector<ApplicationManifest> kept;
    kept.reserve(apps.size() - std::min(apps.size(), dropped.size()));
    for (ApplicationManifest& app : apps) {
        if (dropped.count(app.GetAppName()) == 0) {
            kept.push_back(std::move(app));
        }
    }
    apps.swap(kept);
    for (const DependsMap::const_iterator& entry : entries) {
        table.erase(entry);
    }
}

} // namespace

std::uint32_t ParseAndDepend::ParseYaml(ParamType paraType, const std::string& path,
                                        std::vector<ApplicationManifest>& apps,
                                        const std::map<std::string, std::string>& replaceData)
{
    const std::shared_ptr<Parser> parser = MakeParser(paraType);
    if (parser == nullptr) {
        return PARSE_ERR_CREATE_PARSER;
    }
    const std::uint32_t parsed = parser->ParseToApplication(path, apps, replaceData);
    if (parsed != 0) {
        syslog(LOG_ERR, "InitApplicationsAndDepend ParseToApplication error");
        std::vector<ApplicationManifest>().swap(apps);
        applicationDependsMap_.clear();
        return parsed;
    }
    const bool wasEmpty = applicationDependsMap_.empty();
    const std::vector<DependList*> places = EnterNames(apps, applicationDependsMap_);
    NameSet keys = NameSet::KeysOf(applicationDependsMap_);
    const Incomplete incomplete = EnterDependencies(apps, places, keys);
    if (wasEmpty && incomplete.empty()) {
        return 0; // else entries from before may lack a dependency, too
    }
    const auto entries = LogIncomplete(applicationDependsMap_, incomplete, keys);
    if (entries.empty()) {
        return 0;
    }
    Drop(entries, apps, applicationDependsMap_);
    return PARSE_ERR_DEPEND_NOT_FOUND;
}

std::uint32_t ParseAndDepend::ParseToReplaceData(ParamType paraType, const std::string& path,
                                                 std::map<std::string, std::string>& replaceData)
{
    const std::shared_ptr<Parser> parser = MakeParser(paraType);
    return parser == nullptr ? PARSE_ERR_CREATE_PARSER : parser->ParseToReplaceData(path, replaceData);
}

void ParseAndDepend::SetApplicationDependsMap(const DependsMap& dependsMap)
{
    applicationDependsMap_ = DependsMap(dependsMap);
}

ParseAndDepend::DependsMap::const_iterator
ParseAndDepend::GetAppFromDependsMap(const std::string& appName) const
{
    auto entry = applicationDependsMap_.begin();
    while (entry != applicationDependsMap_.end() && !startplan::MatchesPattern(entry->first, appName)) {
        ++entry;
    }
    return entry;
}

ParseAndDepend::DependsMap::iterator ParseAndDepend::GetAppFromDependsMap(const std::string& appName)
{
    auto entry = applicationDependsMap_.begin();
    while (entry != applicationDependsMap_.end() && !startplan::MatchesPattern(entry->first, appName)) {
        ++entry;
    }
    return entry;
}
