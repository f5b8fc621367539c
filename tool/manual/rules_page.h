#ifndef STARTPLAN_TOOL_MANUAL_RULES_PAGE_H
#define STARTPLAN_TOOL_MANUAL_RULES_PAGE_H

#include <string>

#include "tool/manual/roff_page.h"

namespace tool {

// The page on everything that the check looks for, made from the rules themselves.
std::string RulesPage(const Edition& edition);

} // namespace tool

#endif
