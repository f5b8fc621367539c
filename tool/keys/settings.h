#ifndef STARTPLAN_TOOL_KEYS_SETTINGS_H
#define STARTPLAN_TOOL_KEYS_SETTINGS_H

#include <string>
#include <vector>

#include "startplan/application_manifest.h"
#include "tool/command_line/session.h"

namespace tool {

// One of the forty values of a record.
struct Setting {
    const char* name;   // the key that it is read from, or a name in the same form where none is
    const char* getter; // "GetBinPath"
    // The keys of the entry that decide it, the strongest first; none for what is no key's.
    std::vector<const char*> keys;
    Json (*value)(const ApplicationManifest& app);
};

// All forty, in the order in which the library reads them.
const std::vector<Setting>& Settings();

// A value in one line: "[a, b]", "{A: 1}", and \"\" for the empty text.
std::string ValueText(const Json& value);

} // namespace tool

#endif
