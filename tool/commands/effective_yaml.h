#ifndef STARTPLAN_TOOL_COMMANDS_EFFECTIVE_YAML_H
#define STARTPLAN_TOOL_COMMANDS_EFFECTIVE_YAML_H

#include <string>
#include <vector>

#include "startplan/application_manifest.h"

namespace tool {

// The records as one startup file with every key written out. Read again by the library it gives the same
// records, but for the path of the file; that is written as the key "x-file", which nobody reads.
std::string EffectiveYaml(const std::vector<ApplicationManifest>& apps);

} // namespace tool

#endif
