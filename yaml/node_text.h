#ifndef STARTPLAN_YAML_NODE_TEXT_H
#define STARTPLAN_YAML_NODE_TEXT_H

#include <cstring>
#include <string_view>

#include <yaml.h>

namespace startplan {

// The one rule for a node's text: a scalar's bytes up to its first NUL; empty for every other node. A
// view, good as long as the document is; its data() is a C string, so that it can be logged as it stands.
inline std::string_view NodeText(const yaml_node_t& node)
{
    if (node.type != YAML_SCALAR_NODE || node.data.scalar.value == nullptr || node.data.scalar.length == 0) {
        return "";
    }
    // libyaml ends every scalar with a NUL behind its stored length, so this finds one.
    return reinterpret_cast<const char*>(node.data.scalar.value);
}

} // namespace startplan

#endif
