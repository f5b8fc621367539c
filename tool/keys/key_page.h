#ifndef STARTPLAN_TOOL_KEYS_KEY_PAGE_H
#define STARTPLAN_TOOL_KEYS_KEY_PAGE_H

#include <string>

#include "tool/keys/key_table.h"

namespace tool {

// The manual's tables of keys, in Markdown: kind, default, range and meaning of each key.
std::string KeyTable(FileKind kind);

// What the library makes of each key of a startup file when it is left out, empty, of the wrong kind, or
// beyond its range.
std::string OutcomeTable();

// What the key is worth when it is left out, as the manual writes it.
std::string DefaultWords(const Key& key);

// What can be written plainly, as the manual writes it.
std::string RangeWords(const Key& key);

// A value of the table as the manual writes it: "empty text" or "none" for what is empty.
std::string ValueWords(const Key& key, const char* json);

} // namespace tool

#endif
