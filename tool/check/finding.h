#ifndef STARTPLAN_TOOL_CHECK_FINDING_H
#define STARTPLAN_TOOL_CHECK_FINDING_H

#include <cstddef>
#include <string>
#include <vector>

#include "tool/rules/rule.h"
#include "tool/source/source_tree.h"

namespace tool {

// Of the rules that one mistake can break at thousands of places: so many findings are shown, a last one counts
// the rest. And so many places of one finding.
constexpr std::size_t kMostFindings = 20;
constexpr std::size_t kMostRelated = 3;

// A related place: "first defined here".
struct Place {
    Position position;
    std::string text;
};

// What one rule found at one place. Every text is printable (see printable.h): names and values from files
// have been through Printable() when they come here. Paths in positions have not.
struct Finding {
    const Rule* rule = nullptr;
    Position position;
    std::size_t length = 0;    // of the marked text in characters; 0 for unknown
    std::size_t visit = kNone; // whose chain of files is shown; kNone for none
    std::string message;       // lower case start, no full stop, the offending text in quotes
    std::string effect;        // what the device does: a plain sentence
    std::string help;          // how to mend it: an imperative
    std::vector<Place> related;
    Level least = Level::OFF; // for what is graver than its rule is by itself
    Level level = Level::OFF; // as it is shown; whoever finds something leaves it alone
};

// What is found, in any order and as often as it is seen.
class Findings {
public:
    void Add(Finding finding) { findings_.push_back(std::move(finding)); }

    // As SortFindings() leaves them. Leaves nothing behind.
    std::vector<Finding> TakeSorted();

private:
    std::vector<Finding> findings_;
};

// By file, line, column, rule and message. The same finding once, since a file that is named twice is looked at
// twice.
void SortFindings(std::vector<Finding>& findings);

// How many characters a scalar takes where it is written, quotes included; 0 if it is written in more than one
// line, with escapes or as an alias.
std::size_t LengthOf(const SourceFile& file, const NodeUse& use);

// Where one byte of a scalar's text is written; the scalar's own mark if that cannot be told.
Mark MarkInside(const SourceFile& file, const NodeUse& use, std::size_t byte);

} // namespace tool

#endif
