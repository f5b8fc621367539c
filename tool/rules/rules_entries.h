#ifndef STARTPLAN_TOOL_RULES_RULES_ENTRIES_H
#define STARTPLAN_TOOL_RULES_RULES_ENTRIES_H

#include <vector>

#include "tool/rules/rule.h"

namespace tool {

extern const Rule kDuplicateApplication;
extern const Rule kDuplicateKey;
extern const Rule kEmptyValue;
extern const Rule kEntryNotMapping;
extern const Rule kFlagDisagrees;
extern const Rule kIncompleteEntry;
extern const Rule kListForMap;
extern const Rule kMapForScalar;
extern const Rule kScalarForList;
extern const Rule kTooManyArguments;
extern const Rule kUnknownKey;

// About entries and their keys.
std::vector<const Rule*> EntryRules();

} // namespace tool

#endif
