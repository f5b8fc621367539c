#ifndef STARTPLAN_TOOL_CHECK_KEYED_MAPPING_H
#define STARTPLAN_TOOL_CHECK_KEYED_MAPPING_H

#include <cstddef>
#include <string>
#include <vector>

#include "tool/check/finding.h"
#include "tool/configuration/configuration.h"
#include "tool/keys/key_table.h"

namespace tool {

// A mapping whose keys stand in the table: an entry, or the root of a file of another kind.
struct KeyedMapping {
    FileKind kind = FileKind::STARTUP;
    const SourceFile* file = nullptr;
    std::size_t visit = kNone; // kNone for the replace data
    std::size_t entry = kNone; // in SourceTree::Entries(); kNone for what is no entry
    NodeUse node;

    Position PositionOf(const NodeUse& use) const { return {file->Path(), use.mark}; }
};

// Every one of them in the order of the files, a mapping that several entries share once. Without the user's
// own mappings at the root of startup files: what begins with "x-" and could not start.
std::vector<KeyedMapping> KeyedMappings(const Configuration& configuration);

// Whether the library skips the entry, or would if it had come that far.
bool IsIncomplete(const Configuration& configuration, std::size_t entry);

// Whether the entry is one of the user's own and no application.
bool IsOwnEntry(const Configuration& configuration, std::size_t entry);

// A finding at one use in the mapping's file.
Finding FindingAt(const KeyedMapping& mapping, const Rule& rule, const NodeUse& use, std::string message,
                  std::string effect, std::string help);

} // namespace tool

#endif
