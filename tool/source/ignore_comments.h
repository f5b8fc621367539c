#ifndef STARTPLAN_TOOL_SOURCE_IGNORE_COMMENTS_H
#define STARTPLAN_TOOL_SOURCE_IGNORE_COMMENTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tool/source/source_file.h"

namespace tool {

// One rule of one comment "# startplan: ignore[rule-id, rule-id]".
struct IgnoreComment {
    Mark mark;              // where the rule's id stands; the comment's own for one that is not understood
    std::string rule;       // empty for a comment that is not understood
    std::size_t length = 0; // of what stands at the mark
    std::uint32_t line = 0; // whose findings it hides: its own, or the next one that is more than a comment
};

// Those of a file, in order. What looks like a comment within a text is none.
std::vector<IgnoreComment> ReadIgnoreComments(const SourceFile& file);

} // namespace tool

#endif
