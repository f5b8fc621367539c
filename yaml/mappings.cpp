#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <syslog.h>

#include "startplan/kvs_type_yaml.h"
#include "yaml/keep_errno.h"
#include "yaml/node_ref.h"
#include "yaml/node_text.h"
#include "yaml/yaml_log.h"

namespace startplan {

using namespace yaml_log;

void LogSubNotMap(const char* key)
{
    const KeepErrno keep;
    syslog(LOG_WARNING, " [%s][%s %d] Get sub yaml of %s, the type is not map", kTag, "GetSubKvs", kSubNotMap,
           key);
}

void LogSubNodeMissing(const char* key)
{
    const KeepErrno keep;
    syslog(LOG_ERR, " [%s][%s %d] Get sub yaml of %s failed, node ptr is nullptr", kTag, "GetSubKvs",
           kSubNodeMissing, key);
}

NodeRef FindInMapping(NodeRef mapping, std::string_view key)
{
    if (!mapping.IsMapping()) {
        LogSubNotMap(std::string(key).c_str());
        return {};
    }
    if (mapping.document == nullptr) { // a handle that was moved from
        return {};
    }
    const auto& pairs = mapping.node->data.mapping.pairs;
    for (const yaml_node_pair_t* pair = pairs.start; pair != pairs.top; ++pair) {
        const yaml_node_t* value = mapping.Get(pair->value);
        const yaml_node_t* keyNode = mapping.Get(pair->key);
        if (value == nullptr || keyNode == nullptr) {
            LogSubNodeMissing(std::string(key).c_str());
            return {};
        }
        if (NodeText(*keyNode) == key) {
            return {mapping.document, value};
        }
    }
    return {};
}

bool ReadPairs(NodeRef mapping, std::vector<PairRef>& out)
{
    if (!mapping.IsMapping()) {
        const KeepErrno keep;
        syslog(LOG_WARNING, " [%s][%s %d] Get yaml array, the type is not map", kTag, "GetArray",
               kArrayNotMap);
        return false;
    }
    if (mapping.document == nullptr) {
        return false;
    }
    const auto& pairs = mapping.node->data.mapping.pairs;
    out.reserve(out.size() + static_cast<std::size_t>(pairs.top - pairs.start));
    for (const yaml_node_pair_t* pair = pairs.start; pair != pairs.top; ++pair) {
        const yaml_node_t* value = mapping.Get(pair->value);
        const yaml_node_t* key = mapping.Get(pair->key);
        if (value == nullptr || key == nullptr) {
            const KeepErrno keep;
            syslog(LOG_ERR, " [%s][%s %d] Get yaml array failed, the node ptr is nullptr", kTag, "GetArray",
                   kArrayNodeMissing);
            return false;
        }
        out.push_back({NodeText(*key), value});
    }
    return true;
}

} // namespace startplan

namespace ProcMgr {

bool KvsTypeYaml::GetSubKvs(const std::string& name, KvsTypeYaml& sub) const
{
    const startplan::NodeRef found = startplan::FindInMapping(startplan::NodeRef::Of(*this), name);
    if (!found.IsPresent()) {
        return false;
    }
    sub = startplan::NodeRef::MakeHandle(document, *found.node, name);
    return true;
}

bool KvsTypeYaml::GetArray(std::vector<KvsTypeYaml>& out) const
{
    std::vector<startplan::PairRef> pairs;
    const bool complete = startplan::ReadPairs(startplan::NodeRef::Of(*this), pairs);
    // This handle may itself stand in `out` and be gone once that grows.
    const std::shared_ptr<YamlDocument> shared = document;
    for (const startplan::PairRef& pair : pairs) {
        out.push_back(startplan::NodeRef::MakeHandle(shared, *pair.value, std::string(pair.key)));
    }
    return complete;
}

} // namespace ProcMgr
