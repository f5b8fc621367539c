#ifndef STARTPLAN_TOOL_MANUAL_ROFF_TEXT_H
#define STARTPLAN_TOOL_MANUAL_ROFF_TEXT_H

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Text in roff that shows exactly these characters, hyphens as they are typed. For tags and lines of code.
std::string RoffLiteral(std::string_view text);

std::string RoffBold(std::string_view literal);
std::string RoffItalic(std::string_view literal);

// Prose in lines of roff: broken behind each sentence and before 80 columns. `variables` are words such as NAME,
// which are shown as such. Code is what stands in backquotes, and so are options ("--all"), pages ("plan(1)"), and
// whatever a hyphenated word would not be: there hyphens are the ones that are typed.
std::vector<std::string> RoffProse(std::string_view text, const std::set<std::string>& variables);

// A usage such as "start|stop TOP [NAME]...": capitals are what is put in, other words stand as they are.
std::string RoffUsage(std::string_view usage);

// The words in capitals of a usage or of an option's value.
std::set<std::string> RoffVariables(std::string_view usage);

std::string InCapitals(std::string_view text);

} // namespace tool

#endif
