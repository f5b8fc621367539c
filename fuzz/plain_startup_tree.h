#ifndef STARTPLAN_FUZZ_PLAIN_STARTUP_TREE_H
#define STARTPLAN_FUZZ_PLAIN_STARTUP_TREE_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "startplan/application_manifest.h"
#include "startplan/kvs_type_yaml.h"

namespace fuzz {

// A parse of a startup tree put together from the public readers, one key after the other. It logs what
// stands between their lines itself, so that its lines and those of ParseToApplication() can be compared.
class PlainStartupTree {
public:
    using ReplaceData = std::map<std::string, std::string>;

    // Inputs may name files over and over, within the limits of the walk: 199 files that name thousands of
    // startup files each. That is the writer's bill and not what a fuzzer is to spend its time on.
    static constexpr std::size_t kMostStartupFiles = 40;

    // False for a tree that is refused: too many startup files, or a path whose replacement never ends.
    bool Walk(const std::string& path, const ReplaceData& replaceData);
    void ReadStartupFiles();

    std::uint32_t result = 0;
    std::vector<ApplicationManifest> apps;
    std::vector<std::string> startupPaths;
    std::size_t bytesLoaded = 0; // these two: what a parse may cost
    std::size_t reads = 0;       // values read

private:
    bool AddPaths(const ProcMgr::KvsTypeYaml& node, const ReplaceData& replaceData,
                  std::vector<std::string>& pending);
    void ReadStartupFile(const std::string& path);
    void ReadEntry(const ProcMgr::KvsTypeYaml& entry, const std::string& path);
};

} // namespace fuzz

#endif
