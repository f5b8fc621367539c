#ifndef STARTPLAN_KVS_TYPE_YAML_H
#define STARTPLAN_KVS_TYPE_YAML_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <yaml.h>

namespace startplan {
struct NodeRef; // the library's own view of a node; not part of the interface
}

/// @file
/// YAML files and the nodes in them.

namespace ProcMgr {

/// One loaded YAML file. Made by KvsTypeYaml::InitYamlNode() and shared by every handle that stands in
/// the file; freed with the last of them. Never written to once loaded.
class YamlDocument {
public:
    /// An empty, zero-filled document that owns nothing yet.
    YamlDocument();
    YamlDocument(const YamlDocument&) = delete;
    YamlDocument& operator=(const YamlDocument&) = delete;
    /// Frees every node, if the document was loaded.
    ~YamlDocument();

private:
    friend class KvsTypeYaml;
    friend struct startplan::NodeRef;

    yaml_document_t document;
    bool loaded = false; ///< whether `document` owns nodes
};

/// A place in a YAML file: moves down the tree and reads the node it stands on.
///
///     KvsTypeYaml root;
///     KvsTypeYaml timeOut;
///     if (root.InitYamlNode("/etc/app/limits.yaml") && root.GetSubKvs("time_out", timeOut)) {
///         return timeOut.GetInt();
///     }
///
/// Null-safe: reading a node of the wrong kind gives an empty or zero value, never an exception.
/// Only std::bad_alloc leaves an operation.
///
/// A handle is copied and moved like a value and shares the document with the handle it came from: a
/// sub-handle stays good when that handle is gone. A default-constructed handle stands on nothing: no
/// document, neither scalar nor sequence nor mapping, an empty key. A handle that was moved from may only be
/// assigned to or destroyed.
///
/// A node's text is its scalar's bytes up to the first NUL. A sequence or mapping that is used as a key
/// or read as a sequence item has the empty text.
///
/// Threads: the document is reference-counted atomically and never changes once loaded, so handles in
/// one file may live on different threads. A single handle has no lock.
class KvsTypeYaml {
public:
    /// Loads the first document of the file and stands on its root node. The key stays as it is.
    ///
    ///     loaded                      true, nothing logged
    ///     realpath() fails            false, the handle unchanged, errno from realpath(), LOG_INFO
    ///                                 " [%s][%s %d] file not found, yamlPath=%s" (161, path as given)
    ///     fopen() fails               false, the handle unchanged, errno from fopen(), LOG_ERR
    ///                                 " [%s][%s %d] Load yaml=%s failed, open failed" (167, resolved path)
    ///     not YAML, or not readable   false, LOG_ERR " [%s][%s %d] Load yaml=%s failed, init yaml paser
    ///     (a directory)               failed" (one line; 175, resolved path)
    ///     no document in the file     false, LOG_ERR
    ///     (an empty one)              " [%s][%s %d] Load yaml=%s failed, root node is nullptr" (183,
    ///                                 resolved path)
    /// After the last two the handle is of no use: let go of it without reading it.
    ///
    /// The first three arguments of each line are "YAMLPARSE", "InitYamlNode" and the number shown. The
    /// log calls leave errno as they found it; errno is never reset, so it means something only after
    /// the outcomes that name it. The file is closed again in every case.
    bool InitYamlNode(const std::string& yamlPath);

    /// Finds the key `name` in the mapping this handle stands on. Keys are compared byte by byte; where a
    /// mapping repeats a key the first one wins.
    ///     found                       true: `sub` stands on the value, its GetKey() is `name`
    ///     no such key                 false, `sub` untouched, nothing logged
    ///     not a mapping (no node      false, `sub` untouched, LOG_WARNING
    ///     included)                   " [%s][%s %d] Get sub yaml of %s, the type is not map"
    ///     a pair without its nodes    false, `sub` untouched, LOG_ERR
    ///                                 " [%s][%s %d] Get sub yaml of %s failed, node ptr is nullptr"
    /// Arguments of the lines: "YAMLPARSE", "GetSubKvs", 240 or 228, the name. `sub` may be this handle.
    bool GetSubKvs(const std::string& name, KvsTypeYaml& sub) const;

    /// The mapping key under which GetSubKvs() or GetArray() found this node; empty for a root and for
    /// a sequence item.
    std::string GetKey() const;

    /// The scalar's text; empty for every other kind of node. Never logs.
    std::string GetString() const;

    /// The scalar's text as a decimal number, read as a formatted stream extraction reads it under the
    /// global C++ locale.
    ///     no node, sequence, mapping, empty text, no leading digits    0
    ///     " 42 ", "-7", "12abc", "1.9", "010", "0x1F"                  42, -7, 12, 1, 10, 0
    ///     beyond the range of int                                      the nearest limit
    /// Never fails, never logs. GetIsNullOfScalarType() tells an empty value from a zero.
    int GetInt() const;

    /// As GetInt(), for an unsigned number of 64 bits.
    ///     "-7"                           18446744073709551609: a minus negates modulo 2^64
    ///     above 18446744073709551615     18446744073709551615
    std::uint64_t GetUint64() const;

    /// Whether the scalar's text, lower-cased with tolower(), contains "true".
    ///     true, TRUE, " true", untrue, trueish      true
    ///     yes, on, 1, y, empty, any non-scalar      false
    /// Never logs.
    bool GetBool() const;

    /// Whether this is a scalar with an empty text (`key:` or `key: ""`). A scalar written `null` or `~`
    /// has a text and is not null here; nor is a sequence, a mapping or no node at all. Never logs.
    bool GetIsNullOfScalarType() const;

    /// The items of a sequence as 32-bit unsigned numbers, in order.
    ///     [1, "", 3]                           1, 0, 3
    ///     [-1, 4294967296, 12abc, x, [7]]      4294967295, 4294967295, 12, 0, 0
    ///     not a sequence                       empty, nothing logged
    ///     an item without its node             empty, LOG_ERR " [%s][%s %d] Get uint32 sequence failed,
    ///                                          the node ptr is nullptr, default as empty" (one line)
    /// Arguments of the line: "YAMLPARSE", "GetSequenceUint32", 87.
    std::vector<std::uint32_t> GetSequenceUint32() const;

    /// The texts of a sequence's items, in order; empty texts are kept.
    ///     not a sequence               empty, nothing logged
    ///     an item without its node     empty, LOG_ERR " [%s][%s %d] Get string sequence failed, the node
    ///                                  ptr is nullptr, default as empty" (one line)
    /// Arguments of the line: "YAMLPARSE", "GetSequenceString", 116.
    std::vector<std::string> GetSequenceString() const;

    /// A handle on each item of a sequence, in order, each with an empty key.
    ///     not a sequence               empty, nothing logged
    ///     an item without its node     empty, LOG_ERR " [%s][%s %d] Get yaml node sequence failed, the
    ///                                  node ptr is nullptr, default as empty" (one line)
    /// Arguments of the line: "YAMLPARSE", "GetSequenceYamlNode", 141.
    std::vector<KvsTypeYaml> GetSequenceYamlNode() const;

    /// Appends a handle on each value of a mapping to `out`, each carrying its key, in the file's order,
    /// repeated keys included.
    ///     a mapping, empty or not      true
    ///     not a mapping (no node       false, `out` untouched, LOG_WARNING
    ///     included)                    " [%s][%s %d] Get yaml array, the type is not map"
    ///     a pair without its nodes     false, the pairs before it stay in `out`, LOG_ERR
    ///                                  " [%s][%s %d] Get yaml array failed, the node ptr is nullptr"
    /// Arguments of the lines: "YAMLPARSE", "GetArray", 197 or 209.
    bool GetArray(std::vector<KvsTypeYaml>& out) const;

private:
    friend struct startplan::NodeRef;

    std::shared_ptr<YamlDocument> document; ///< keeps what `node` points into alive
    yaml_node_t node = yaml_node_t();
    std::string key;
};

} // namespace ProcMgr

#endif
