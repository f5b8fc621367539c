#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include <syslog.h>

#include "depend/name_patterns.h"
#include "depend/table_index.h"
#include "startplan/application_manifest.h"
#include "startplan/parse_and_depend.h"
#include "startplan/parser.h"
#include "startplan/result_codes.h"

namespace {

using ProcMgr::Parser;
using startplan::DependsMap;

std::shared_ptr<Parser> MakeParser(ParamType paraType)
{
    std::shared_ptr<Parser> parser = ProcMgr::ParseFactory::CreateParser(paraType);
    if (parser == nullptr) {
        syslog(LOG_ERR, "CreateParser failed parser is nullptr. paraType:%u",
               static_cast<unsigned>(paraType));
    }
    return parser;
}

void EnterApplications(const std::vector<ApplicationManifest>& apps, DependsMap& table)
{
    for (const ApplicationManifest& app : apps) {
        const auto [entry, isNew] = table.try_emplace(app.GetAppName(), app.GetDependList());
        if (!isNew) {
            syslog(LOG_WARNING, "InitApplicationsAndDepend applicationDependsMap key: %s  will be covered !",
                   app.GetAppName().c_str());
            entry->second = app.GetDependList();
        }
    }
}

// The keys that depend on a name that is no key, each once. Every such dependency is logged.
std::vector<std::string> FindIncomplete(const DependsMap& table)
{
    std::vector<std::string> incomplete;
    for (const auto& [app, depends] : table) {
        bool isComplete = true;
        for (const std::string& dependency : depends) {
            if (table.count(dependency) == 0) {
                syslog(LOG_ERR, "CheckApplicationsAndDepend error: app: %s depends: %s not in appList",
                       app.c_str(), dependency.c_str());
                isComplete = false;
            }
        }
        if (!isComplete) {
            incomplete.push_back(app);
        }
    }
    return incomplete;
}

void Drop(const std::vector<std::string>& names, std::vector<ApplicationManifest>& apps, DependsMap& table)
{
    const std::unordered_set<std::string_view> dropped(names.begin(), names.end());
    // Records are moved to a new vector, since they cannot be assigned to each other in the old one.
    std::vector<ApplicationManifest> kept;
    kept.reserve(apps.size());
    for (ApplicationManifest& app : apps) {
        if (dropped.count(app.GetAppName()) == 0) {
            kept.push_back(std::move(app));
        }
    }
    apps.swap(kept);
    for (const std::string& name : names) {
        table.erase(name);
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
    EnterApplications(apps, applicationDependsMap_);
    const std::vector<std::string> incomplete = FindIncomplete(applicationDependsMap_);
    if (incomplete.empty()) {
        return 0;
    }
    Drop(incomplete, apps, applicationDependsMap_);
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
