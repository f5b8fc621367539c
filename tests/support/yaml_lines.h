#ifndef STARTPLAN_TESTS_SUPPORT_YAML_LINES_H
#define STARTPLAN_TESTS_SUPPORT_YAML_LINES_H

#include <string>

#include "tests/support/log_capture.h"

namespace test_support {

// What the YAML layer logs, for tests that expect it among other lines.

inline LogLine FileNotFound(const std::string& path)
{
    return {LOG_INFO, " [YAMLPARSE][InitYamlNode 161] file not found, yamlPath=" + path};
}
inline LogLine OpenFailed(const std::string& path)
{
    return {LOG_ERR, " [YAMLPARSE][InitYamlNode 167] Load yaml=" + path + " failed, open failed"};
}
inline LogLine NotYaml(const std::string& path)
{
    return {LOG_ERR, " [YAMLPARSE][InitYamlNode 175] Load yaml=" + path + " failed, init yaml paser failed"};
}
inline LogLine NoRoot(const std::string& path)
{
    return {LOG_ERR, " [YAMLPARSE][InitYamlNode 183] Load yaml=" + path + " failed, root node is nullptr"};
}
inline LogLine NoMappingFor(const std::string& key)
{
    return {LOG_WARNING, " [YAMLPARSE][GetSubKvs 240] Get sub yaml of " + key + ", the type is not map"};
}
inline LogLine MissingNodeBefore(const std::string& key)
{
    return {LOG_ERR, " [YAMLPARSE][GetSubKvs 228] Get sub yaml of " + key + " failed, node ptr is nullptr"};
}
inline LogLine ArrayIsNoMapping()
{
    return {LOG_WARNING, " [YAMLPARSE][GetArray 197] Get yaml array, the type is not map"};
}
inline LogLine MissingNodeInArray()
{
    return {LOG_ERR, " [YAMLPARSE][GetArray 209] Get yaml array failed, the node ptr is nullptr"};
}
inline LogLine MissingStringItem()
{
    return {LOG_ERR,
            " [YAMLPARSE][GetSequenceString 116] Get string sequence failed, the node ptr is nullptr, "
            "default as empty"};
}
inline LogLine MissingUint32Item()
{
    return {LOG_ERR,
            " [YAMLPARSE][GetSequenceUint32 87] Get uint32 sequence failed, the node ptr is nullptr, "
            "default as empty"};
}

} // namespace test_support

#endif
