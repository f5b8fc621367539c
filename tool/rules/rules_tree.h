#ifndef STARTPLAN_TOOL_RULES_RULES_TREE_H
#define STARTPLAN_TOOL_RULES_RULES_TREE_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kEmptyFile;
extern const Rule kEmptyPlaceholder;
extern const Rule kExtraDocument;
extern const Rule kFileListedTwice;
extern const Rule kIncludeCycle;
extern const Rule kIncludeLimit;
extern const Rule kIncludeLimitNear;
extern const Rule kMissingSubStartup;
extern const Rule kNoReplaceData;
extern const Rule kNoStartupFile;
extern const Rule kNotYaml;
extern const Rule kPathRefused;
extern const Rule kPlaceholderInSubStartup;
extern const Rule kRootNotMapping;
extern const Rule kUnknownPlaceholder;
extern const Rule kUnreadableFile;

// About the files and how they name each other.
std::vector<const Rule*> TreeRules();

} // namespace tool

#endif
