#ifndef STARTPLAN_TESTS_SUPPORT_YAML_SNIPPET_H
#define STARTPLAN_TESTS_SUPPORT_YAML_SNIPPET_H

#include <stdexcept>
#include <string>
#include <vector>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/temporary_tree.h"

namespace test_support {

// A handle on the root of this YAML text. The file is gone when it returns.
inline ProcMgr::KvsTypeYaml Load(const std::string& text)
{
    const TemporaryTree tree;
    ProcMgr::KvsTypeYaml root;
    if (!root.InitYamlNode(tree.Write("snippet.yaml", text))) {
        throw std::runtime_error("cannot load: " + text);
    }
    return root;
}

// A handle on the value of a key, which must be there.
inline ProcMgr::KvsTypeYaml At(const ProcMgr::KvsTypeYaml& mapping, const std::string& key)
{
    ProcMgr::KvsTypeYaml value;
    if (!mapping.GetSubKvs(key, value)) {
        throw std::runtime_error("no key " + key);
    }
    return value;
}

// A handle on the value that is written as `value`, in a mapping of one key: LoadValue("-7").
inline ProcMgr::KvsTypeYaml LoadValue(const std::string& value)
{
    return At(Load("key: " + value + "\n"), "key");
}

// The text as a double-quoted YAML scalar.
inline std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        switch (c) {
        case '\t':
            quoted += "\\t";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '\0':
            quoted += "\\0";
            break;
        case '"':
        case '\\':
            quoted += '\\';
            quoted += c;
            break;
        default:
            quoted += c;
        }
    }
    return quoted + '"';
}

// The texts as one YAML sequence, an item a line.
inline std::string SequenceOf(const std::vector<std::string>& texts)
{
    std::string sequence;
    for (const std::string& text : texts) {
        sequence += "- " + Quoted(text) + "\n";
    }
    return sequence;
}

} // namespace test_support

#endif
