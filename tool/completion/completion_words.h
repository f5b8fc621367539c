#ifndef STARTPLAN_TOOL_COMPLETION_COMPLETION_WORDS_H
#define STARTPLAN_TOOL_COMPLETION_COMPLETION_WORDS_H

#include <optional>
#include <string>
#include <vector>

namespace tool {

// What may come next on a command line, of which `words` stand there already, without the program's name.
// Nothing where it is a file. Empty for a line that makes no sense.
std::optional<std::vector<std::string>> NextWords(const std::vector<std::string>& words);

// The applications of the configuration that a line names, which may end in an option without its value.
std::vector<std::string> ApplicationsOf(const std::vector<std::string>& words);

} // namespace tool

#endif
