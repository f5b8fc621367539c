#include "tool/configuration/configuration.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "startplan/result_codes.h"
#include "tool/text/failure.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::string_view kEntryLine = "Get app name when parsing Yaml file, appName=%s";
constexpr std::string_view kIncompleteLine = "cfg isn't complete:appName=%s, binPath=%s, uid=%u";
constexpr std::string_view kMissingLine =
    "CheckApplicationsAndDepend error: app: %s depends: %s not in appList";

// Below a root, people type the path that their shell completes.
void CheckTopBelowRoot(const ConfigurationRequest& request, const DeviceView& device)
{
    std::string root = request.device.root;
    root.erase(root.find_last_not_of('/') + 1);
    if (root.empty() || request.top.compare(0, root.size() + 1, root + "/") != 0 ||
        device.Root()->Resolve(request.top)) {
        return;
    }
    throw Failure(fmt::format(
        "no {} below {}, did you mean \"{}\"? With --root, paths are those on the device",
        Printable(request.top), Printable(request.device.root), Printable(request.top.substr(root.size()))));
}

// Reads the replace file behind its guard. False if it must not be read.
bool LoadReplaceData(Configuration& configuration, LogCollector& log)
{
    const std::string& path = configuration.request.replaceFile;
    configuration.replaceData = configuration.request.definitions;
    if (path.empty()) {
        return true;
    }
    configuration.replaceSource = SourceFile::Read(path);
    const SourceFile& source = *configuration.replaceSource;
    if (source.State() == FileState::REFUSED) {
        configuration.refusals.push_back(
            {{path, source.ErrorMark()}, "the file " + source.Error(), kNone, RefusalKind::FILE});
        return false;
    }
    configuration.replaceResult =
        configuration.library.ParseToReplaceData(PARAM_TYPE_YAML, path, configuration.replaceData);
    configuration.lines = log.Take();
    return true;
}

// The library logs one line when it takes an entry up and another one when it finds it incomplete, so its
// lines tell which entry is which.
void ReadEntryStates(Configuration& configuration, const LogLines& lines)
{
    std::vector<EntryState>& states = configuration.entryStates;
    std::size_t taken = 0;
    for (const LogLine& line : lines) {
        if (line.format == kEntryLine) {
            if (taken < states.size()) {
                states[taken] = EntryState::KEPT;
            }
            ++taken;
        } else if (line.format == kIncompleteLine && taken > 0 && taken <= states.size()) {
            states[taken - 1] = EntryState::INCOMPLETE;
            configuration.incomplete.push_back({taken - 1, line.arguments.at(1), line.arguments.at(2)});
        } else if (line.format == kMissingLine && line.arguments.size() == 2) {
            configuration.missing.push_back({line.arguments[0], line.arguments[1]});
        }
    }
}

void MarkDropped(Configuration& configuration)
{
    std::vector<MissingDependency>& missing = configuration.missing;
    std::sort(missing.begin(), missing.end(), [](const MissingDependency& a, const MissingDependency& b) {
        return std::tie(a.application, a.dependency) < std::tie(b.application, b.dependency);
    });
    for (const MissingDependency& one : missing) {
        for (const std::size_t entry : configuration.tree.EntriesNamed(one.application)) {
            if (configuration.entryStates[entry] == EntryState::KEPT) {
                configuration.entryStates[entry] = EntryState::DROPPED;
            }
        }
    }
}

// Records and kept entries come in the same order.
void JoinAppsAndEntries(Configuration& configuration)
{
    const std::vector<SourceEntry>& entries = configuration.tree.Entries();
    std::size_t entry = 0;
    for (std::size_t app = 0; app < configuration.apps.size(); ++app) {
        const std::string& name = configuration.apps[app].GetAppName();
        configuration.appByName[name] = app;
        while (entry < entries.size() && configuration.entryStates[entry] != EntryState::KEPT) {
            ++entry;
        }
        const bool isSame = entry < entries.size() &&
                            configuration.tree.FileOf(entries[entry]).Text(entries[entry].key) == name;
        configuration.entryOfApp.push_back(isSame ? entry : kNone);
        ++entry;
    }
}

} // namespace

const SourceEntry* Configuration::EntryOf(std::size_t app) const
{
    return entryOfApp[app] == kNone ? nullptr : &tree.Entries()[entryOfApp[app]];
}

std::size_t Configuration::FindApp(const std::string& name) const
{
    const auto found = appByName.find(name);
    return found == appByName.end() ? kNone : found->second;
}

std::optional<Position> Configuration::PositionOfApp(const std::string& name) const
{
    const std::vector<std::size_t>& named = tree.EntriesNamed(name);
    if (named.empty()) {
        return std::nullopt;
    }
    return tree.PositionOf(tree.Entries()[named.back()]);
}

std::size_t Configuration::FilesRead() const
{
    std::size_t count = 0;
    for (std::size_t visit = 0; visit < tree.Visits().size(); ++visit) {
        count += tree.IsLoaded(visit) ? 1U : 0U;
    }
    return count;
}

Configuration LoadConfiguration(ConfigurationRequest request)
{
    Configuration configuration;
    configuration.request = std::move(request);
    const DeviceView device(configuration.request.device);
    configuration.users = device.Users();
    configuration.groups = device.Groups();
    CheckTopBelowRoot(configuration.request, device);
    LogCollector log(configuration.request.wantsInfoText);
    if (!LoadReplaceData(configuration, log)) {
        return configuration;
    }
    configuration.tree = SourceTree::Read(configuration.request.top, configuration.replaceData);
    configuration.refusals = configuration.tree.Refusals();
    if (!configuration.WasRead()) {
        return configuration;
    }
    configuration.result = configuration.library.ParseYaml(PARAM_TYPE_YAML, configuration.request.top,
                                                           configuration.apps, configuration.replaceData);
    LogLines lines = log.Take();
    configuration.entryStates.assign(configuration.tree.Entries().size(), EntryState::UNREAD);
    ReadEntryStates(configuration, lines);
    if (configuration.result != 0 && configuration.result != PARSE_ERR_DEPEND_NOT_FOUND) {
        std::replace(configuration.entryStates.begin(), configuration.entryStates.end(), EntryState::KEPT,
                     EntryState::UNREAD);
    }
    MarkDropped(configuration);
    JoinAppsAndEntries(configuration);
    std::move(lines.begin(), lines.end(), std::back_inserter(configuration.lines));
    return configuration;
}

} // namespace tool
