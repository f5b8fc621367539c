#ifndef STARTPLAN_TOOL_FINDING_TEXT_H
#define STARTPLAN_TOOL_FINDING_TEXT_H

#include <string>

#include "tool/configuration.h"
#include "tool/finding.h"
#include "tool/session.h"

namespace tool {

// A finding for people: where, what, the line with a caret, the chain of files, effect, help, related places.
std::string FindingText(const Session& session, const Configuration& configuration, const Finding& finding);

} // namespace tool

#endif
