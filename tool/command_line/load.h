#ifndef STARTPLAN_TOOL_COMMAND_LINE_LOAD_H
#define STARTPLAN_TOOL_COMMAND_LINE_LOAD_H

#include <string>
#include <vector>

#include "tool/command_line/session.h"
#include "tool/configuration/configuration.h"
#include "tool/text/failure.h"

namespace tool {

// Loads the configuration below `top`, with the options' replace data, for a command that works on what the
// device would have. Says on standard error what was dropped. Throws Failure where there is nothing to
// work on: refused input, a top-level or replace file that cannot be read.
Configuration LoadForWork(const Session& session, const std::string& top);
Configuration LoadForWork(const Session& session, ConfigurationRequest request);

// EXIT_FINDINGS if the library's result is not 0.
ExitStatus StatusOf(const Configuration& configuration);

// The library's result as JSON: {"code": 15795203, "name": "PARSE_ERR_DEPEND_NOT_FOUND"}.
Json ResultJson(std::uint32_t code);

// {"file": ..., "line": ..., "column": ...}
Json PositionJson(const Position& position);

// Starts a command's JSON document with what it read.
Json ConfigurationJson(std::string_view command, const Configuration& configuration);

} // namespace tool

#endif
