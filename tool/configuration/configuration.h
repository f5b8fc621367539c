#ifndef STARTPLAN_TOOL_CONFIGURATION_CONFIGURATION_H
#define STARTPLAN_TOOL_CONFIGURATION_CONFIGURATION_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "startplan/application_manifest.h"
#include "startplan/parse_and_depend.h"
#include "tool/device/device_view.h"
#include "tool/library/log_collector.h"
#include "tool/source/source_tree.h"

namespace tool {

// What is to be read.
struct ConfigurationRequest {
    std::string top;
    std::string replaceFile;                        // empty for none
    std::map<std::string, std::string> definitions; // go before the replace file's
    bool wantsInfoText = false;                     // see LogCollector
    DeviceFiles device = {};
};

// What became of an entry, by the library's own lines and records.
enum class EntryState : std::uint8_t {
    KEPT,
    INCOMPLETE, // no name, no bin_path, or a uid that nobody has
    DROPPED,    // a dependency of it is not configured
    UNREAD,     // the library gave up before, or did not get that far
};

// The library dropped `application` since `dependency` is no key of the table.
struct MissingDependency {
    std::string application;
    std::string dependency;
};

// The library left an entry out, and the values for which it did.
struct IncompleteEntry {
    std::size_t entry = 0; // in SourceTree::Entries()
    std::string binPath;
    std::string uid;
};

// A configuration as the library loads it, with the place of everything in its files.
struct Configuration {
    ConfigurationRequest request;
    std::optional<AccountFile> users;  // where this machine's are not asked
    std::optional<AccountFile> groups; // likewise
    std::map<std::string, std::string> replaceData;
    std::optional<SourceFile> replaceSource; // absent without a replace file
    SourceTree tree;

    // Input that must not reach the library. If there is any, the library was not called: everything
    // below is empty.
    std::vector<Refusal> refusals;

    std::uint32_t replaceResult = 0; // of ParseToReplaceData()
    std::uint32_t result = 0;        // of ParseYaml()
    LogLines lines;                  // of both, in order
    ParseAndDepend library;          // holds the dependency table
    std::vector<ApplicationManifest> apps;
    std::vector<MissingDependency> missing;  // ascending, by application and dependency
    std::vector<IncompleteEntry> incomplete; // in order

    std::vector<EntryState> entryStates; // one for each of tree.Entries()
    std::vector<std::size_t> entryOfApp; // one for each of apps: in tree.Entries(), or kNone
    std::map<std::string, std::size_t>
        appByName; // the last record of a name: the one whose dependencies count

    bool WasRead() const { return refusals.empty(); }
    // The entry of a record; null if the files changed while they were read.
    const SourceEntry* EntryOf(std::size_t app) const;
    // The record of that exact name, or kNone.
    std::size_t FindApp(const std::string& name) const;
    // Where the application with that exact name stands in the files, kept or not; none if nowhere.
    std::optional<Position> PositionOfApp(const std::string& name) const;
    // How many files were read, one named twice counted twice.
    std::size_t FilesRead() const;
    // How many were named and not read.
    std::size_t FilesSkipped() const { return tree.Visits().size() - FilesRead(); }
};

// Guards, walks the files, then has the library read them. Does not throw for what stands in the files.
// Throws Failure where the device's root or accounts cannot be read.
Configuration LoadConfiguration(ConfigurationRequest request);

} // namespace tool

#endif
