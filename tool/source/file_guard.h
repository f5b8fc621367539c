#ifndef STARTPLAN_TOOL_SOURCE_FILE_GUARD_H
#define STARTPLAN_TOOL_SOURCE_FILE_GUARD_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace tool {

// What the command gives to the library at most. The library itself has no such limits and would take
// hours, or all memory, over what lies beyond.
inline constexpr std::size_t kMostFileBytes = std::size_t{64} << 20;
inline constexpr std::size_t kMostTreeBytes = std::size_t{512} << 20;
inline constexpr std::size_t kMostNesting = 500;
// libyaml compares each anchor and each alias with all anchors before it, and looks at every open bracket
// for each token: so many of these steps take some seconds.
inline constexpr std::size_t kMostAnchorSteps = 100'000'000;
inline constexpr std::size_t kMostNestingSteps = 200'000'000;

// Whether the path can be read like a file: the reason in words if it is a pipe, a device or a socket, or
// too large. What does not exist or cannot be examined passes, since the library copes with that.
std::optional<std::string> RefuseFile(const std::string& path);

// The byte in `path` at which the replacement of placeholders would never get any further, see
// YamlParser::ReplaceByMatchDataInPath().
std::optional<std::size_t> FindEndlessPlaceholder(const std::string& path,
                                                  const std::map<std::string, std::string>& replaceData);

} // namespace tool

#endif
