#ifndef STARTPLAN_RESULT_CODES_H
#define STARTPLAN_RESULT_CODES_H

#include <cstdint>

/// @file
/// What ParseAndDepend and the parsers return: 0 for success, else one of these.
///
/// Partial success is normal: next to a failure code the out-parameters may hold everything that
/// could be read. Each operation's table says what they hold after which code.

/// The top-level path cannot be examined with stat(), or it names a directory. Nothing was read.
inline constexpr std::uint32_t PARSE_ERR_CFG_PATH = 0xF10000;

/// No parser exists for the requested ParamType. Nothing was read.
inline constexpr std::uint32_t PARSE_ERR_CREATE_PARSER = 0xF10004;

/// Some configuration file could not be read, or not completely, and errno was EACCES afterwards; the other
/// files were read.
inline constexpr std::uint32_t PARSE_ERR_NO_PERMISSION = 0xF10400;

/// No startup file was collected from the tree of files; also a replace-data file that could not be
/// loaded or whose root is not a mapping.
inline constexpr std::uint32_t PARSE_ERR_NO_STARTUP_FILE = 0xF10401;

/// The walk over the sub-startup files reached its limit of 200 files; at most 199 can be walked.
inline constexpr std::uint32_t PARSE_ERR_TOO_MANY_SUB_STARTUP = 0xF10402;

/// An application, or a dependency of one, is not in the dependency table.
inline constexpr std::uint32_t PARSE_ERR_DEPEND_NOT_FOUND = 0xF10403;

/// A start or termination graph has a cycle and was cleared.
inline constexpr std::uint32_t PARSE_ERR_GRAPH_CYCLE = 0xF10404;

#endif
