#ifndef STARTPLAN_YAML_NODE_REF_H
#define STARTPLAN_YAML_NODE_REF_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <yaml.h>

#include "startplan/kvs_type_yaml.h"

namespace startplan {

// A node and its document, borrowed: what KvsTypeYaml's operations work on. A handle shares ownership of
// the document and copies node and key; the readers of an entry's many keys would make and drop one for
// each of them. Good as long as some handle keeps the document.
struct NodeRef {
    yaml_document_t* document = nullptr;
    const yaml_node_t* node = nullptr;

    static NodeRef Of(const ProcMgr::KvsTypeYaml& handle)
    {
        return {handle.document ? &handle.document->document : nullptr, &handle.node};
    }

    // A handle on `node`, a node of `document`.
    static ProcMgr::KvsTypeYaml MakeHandle(const std::shared_ptr<ProcMgr::YamlDocument>& document,
                                           const yaml_node_t& node, std::string key)
    {
        ProcMgr::KvsTypeYaml handle;
        handle.document = document;
        handle.node = node;
        handle.key = std::move(key);
        return handle;
    }

    bool IsPresent() const { return node != nullptr; }
    bool IsMapping() const { return node->type == YAML_MAPPING_NODE; }
    bool IsSequence() const { return node->type == YAML_SEQUENCE_NODE; }

    const yaml_node_t* Get(int id) const { return yaml_document_get_node(document, id); }
};

// One pair of a mapping.
struct PairRef {
    std::string_view key;
    const yaml_node_t* value = nullptr;
};

// Scalars. Each gives the value that the operation of KvsTypeYaml with the same name documents.
std::string_view ScalarText(const yaml_node_t& node);
int ScalarInt(const yaml_node_t& node);
std::uint64_t ScalarUint64(const yaml_node_t& node);
bool ScalarBool(const yaml_node_t& node);
bool IsNullScalar(const yaml_node_t& node);
// A sequence item's text as one 32-bit number.
std::uint32_t TextUint32(std::string_view text);

// Mappings, with the results and log lines of GetSubKvs() and GetArray().
NodeRef FindInMapping(NodeRef mapping, std::string_view key);
void LogSubNotMap(const char* key);
void LogSubNodeMissing(const char* key);
// False with the line of GetArray() logged; the pairs before a missing node are in `out` all the same.
bool ReadPairs(NodeRef mapping, std::vector<PairRef>& out);

// Sequences, with the results and log lines of GetSequenceString() and GetSequenceUint32().
std::vector<std::string> SequenceStrings(NodeRef sequence);
std::vector<std::uint32_t> SequenceNumbers(NodeRef sequence);

} // namespace startplan

#endif
