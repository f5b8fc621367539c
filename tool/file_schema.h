#ifndef STARTPLAN_TOOL_FILE_SCHEMA_H
#define STARTPLAN_TOOL_FILE_SCHEMA_H

#include "tool/key_table.h"
#include "tool/session.h"

namespace tool {

// The JSON Schema (draft-07) of one kind of file, for editors: made from the table of keys. Values are taken
// as YAML 1.2 reads them.
Json FileSchema(FileKind kind);

// What every schema begins with.
Json SchemaHead(const char* title, const char* description);

} // namespace tool

#endif
