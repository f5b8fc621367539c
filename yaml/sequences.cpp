#include <cstdint>
#include <string>
#include <vector>

#include <syslog.h>

#include "startplan/kvs_type_yaml.h"
#include "yaml/keep_errno.h"
#include "yaml/node_ref.h"
#include "yaml/node_text.h"
#include "yaml/yaml_log.h"

namespace {

using startplan::KeepErrno;
using startplan::NodeRef;
using namespace startplan::yaml_log;

// What `convert` makes of each item, in order. A missing item discards them all and clears `complete`,
// so that the caller, who knows the operation's name, can log it.
template <class Value, class Convert>
std::vector<Value> ReadItems(NodeRef sequence, Convert convert, bool& complete)
{
    std::vector<Value> values;
    complete = true;
    if (sequence.document == nullptr || !sequence.IsSequence()) {
        return values;
    }
    const auto& items = sequence.node->data.sequence.items;
    values.reserve(static_cast<std::size_t>(items.top - items.start));
    for (const yaml_node_item_t* item = items.start; item != items.top; ++item) {
        const yaml_node_t* node = sequence.Get(*item);
        if (node == nullptr) {
            complete = false;
            return {};
        }
        values.push_back(convert(*node));
    }
    return values;
}

} // namespace

namespace startplan {

std::vector<std::string> SequenceStrings(NodeRef sequence)
{
    bool complete = true;
    std::vector<std::string> texts = ReadItems<std::string>(
        sequence, [](const yaml_node_t& item) { return std::string(NodeText(item)); }, complete);
    if (!complete) {
        const KeepErrno keep;
        syslog(LOG_ERR, " [%s][%s %d] Get string sequence failed, the node ptr is nullptr, default as empty",
               kTag, "GetSequenceString", kStringItemMissing);
    }
    return texts;
}

std::vector<std::uint32_t> SequenceNumbers(NodeRef sequence)
{
    bool complete = true;
    std::vector<std::uint32_t> numbers = ReadItems<std::uint32_t>(
        sequence, [](const yaml_node_t& item) { return TextUint32(NodeText(item)); }, complete);
    if (!complete) {
        const KeepErrno keep;
        syslog(LOG_ERR, " [%s][%s %d] Get uint32 sequence failed, the node ptr is nullptr, default as empty",
               kTag, "GetSequenceUint32", kUint32ItemMissing);
    }
    return numbers;
}

} // namespace startplan

namespace ProcMgr {

std::vector<std::uint32_t> KvsTypeYaml::GetSequenceUint32() const
{
    return startplan::SequenceNumbers(NodeRef::Of(*this));
}

std::vector<std::string> KvsTypeYaml::GetSequenceString() const
{
    return startplan::SequenceStrings(NodeRef::Of(*this));
}

std::vector<KvsTypeYaml> KvsTypeYaml::GetSequenceYamlNode() const
{
    bool complete = true;
    std::vector<KvsTypeYaml> nodes = ReadItems<KvsTypeYaml>(
        NodeRef::Of(*this),
        [this](const yaml_node_t& item) { return NodeRef::MakeHandle(document, item, std::string()); },
        complete);
    if (!complete) {
        const KeepErrno keep;
        syslog(LOG_ERR,
               " [%s][%s %d] Get yaml node sequence failed, the node ptr is nullptr, default as empty", kTag,
               "GetSequenceYamlNode", kNodeItemMissing);
    }
    return nodes;
}

} // namespace ProcMgr
