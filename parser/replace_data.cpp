#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <syslog.h>

#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "yaml/keep_errno.h"
#include "yaml/node_ref.h"

namespace {

using ReplaceData = std::map<std::string, std::string>;
using startplan::KeepErrno;
using startplan::NodeRef;
using startplan::PairRef;

constexpr char kReplaceDataKey[] = "cfgmgr_env";
constexpr std::string_view kOpen = "${";

void AddNames(const std::vector<PairRef>& names, ReplaceData& replaceData)
{
    for (const PairRef& name : names) {
        replaceData.try_emplace(std::string(name.key), startplan::ScalarText(*name.value));
    }
}

} // namespace

namespace ProcMgr {

std::uint32_t YamlParser::ParseToReplaceData(const std::string& path, ReplaceData& replaceData) const
{
    KvsTypeYaml root;
    if (!root.InitYamlNode(path)) {
        const KeepErrno keep;
        syslog(LOG_ERR, "Load file=%s failed, init yaml node failed", path.c_str());
        root = KvsTypeYaml(); // stands on nothing, which the next step reports
    }
    const NodeRef rootNode = NodeRef::Of(root);
    std::vector<PairRef> sections;
    if (!ReadPairs(rootNode, sections)) {
        const KeepErrno keep;
        syslog(LOG_ERR, "CreateVehicleData failed, %s is invalid yaml file, first layer is not an array!",
               path.c_str());
        return PARSE_ERR_NO_STARTUP_FILE;
    }
    for (const PairRef& section : sections) {
        if (section.key != kReplaceDataKey) {
            continue;
        }
        std::vector<PairRef> names;
        if (!ReadPairs({rootNode.document, section.value}, names)) {
            const KeepErrno keep;
            syslog(LOG_ERR, "CreateVehicleData failed, %s is invalid yaml file, %s 's value is not an array!",
                   path.c_str(), kReplaceDataKey);
            continue;
        }
        AddNames(names, replaceData);
    }
    return 0;
}

// Builds the result beside the path: replacing in place would move the rest of the path once for each
// placeholder.
void YamlParser::ReplaceByMatchDataInPath(std::string& path, const ReplaceData& replaceData) const
{
    if (replaceData.empty()) {
        return;
    }
    std::string replaced;
    std::size_t copied = 0; // how much of the path is in `replaced`
    std::size_t open = path.find(kOpen);
    while (open != std::string::npos) {
        const std::size_t close = path.find('}', open);
        if (close == std::string::npos) {
            break;
        }
        const std::string name = path.substr(open + kOpen.size(), close - open - kOpen.size());
        const auto found = replaceData.find(name);
        if (found == replaceData.end()) {
            // Not behind the placeholder but two bytes before its brace, where a "${" that ends the name
            // is still found. For the empty name this is the same place again, for ever: the declaration
            // warns of it.
            open = path.find(kOpen, open + name.size());
            continue;
        }
        replaced.append(path, copied, open - copied).append(found->second);
        copied = close + 1;
        open = path.find(kOpen, copied);
    }
    if (copied > 0) {
        replaced.append(path, copied);
        path.swap(replaced);
    }
}

} // namespace ProcMgr
