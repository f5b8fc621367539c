#ifndef STARTPLAN_TOOL_KEYS_FILE_SCHEMA_H
#define STARTPLAN_TOOL_KEYS_FILE_SCHEMA_H

#include "tool/command_line/session.h"
#include "tool/keys/key_table.h"

namespace tool {

// The JSON Schema (draft-07) of one kind of file, for editors: made from the table of keys. Values are taken
// as YAML 1.2 reads them.
Json FileSchema(FileKind kind);

// Of a list of such items.
Json ListOf(Json item);

// What every schema begins with.
Json SchemaHead(const char* title, const char* description);

} // namespace tool

#endif
