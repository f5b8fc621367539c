#ifndef STARTPLAN_TOOL_KEYS_KEY_ROWS_H
#define STARTPLAN_TOOL_KEYS_KEY_ROWS_H

#include <vector>

#include "tool/keys/key_table.h"

namespace tool {

// The rows of the table of keys, which key_table.h hands out.
std::vector<Key> StartupRows();
std::vector<Key> TopLevelRows();
std::vector<Key> ReplaceRows();

} // namespace tool

#endif
