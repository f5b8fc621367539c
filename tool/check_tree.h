#ifndef STARTPLAN_TOOL_CHECK_TREE_H
#define STARTPLAN_TOOL_CHECK_TREE_H

#include <vector>

#include "tool/configuration.h"
#include "tool/finding.h"

namespace tool {

// About the files and how they name each other.
std::vector<const Rule*> TreeRules();

// @pre configuration.WasRead().
void CheckTree(const Configuration& configuration, Findings& findings);

} // namespace tool

#endif
