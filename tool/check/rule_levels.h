#ifndef STARTPLAN_TOOL_CHECK_RULE_LEVELS_H
#define STARTPLAN_TOOL_CHECK_RULE_LEVELS_H

#include <map>
#include <string>
#include <vector>

#include "tool/check/finding.h"

namespace tool {

// How serious each rule is, by the rules' own levels and the options of "check". A rule is named by its id; a
// group of them by its title in lower case with "-" for spaces: "tree", "the-check".
class RuleLevels {
public:
    // These throw UsageFailure for a name or a level that does not exist.
    void Set(const std::string& ruleAndLevel); // -W: "RULE=LEVEL"
    void Select(const std::string& rules);     // --select: only these, and those of further calls
    void Ignore(const std::string& rules);     // --ignore

    Level Of(const Rule& rule) const;
    // Its rule's level, or its own where that is graver and nobody has asked for a level.
    Level Of(const Finding& finding) const;
    // Gives each finding its level and takes those out that are off.
    void Apply(std::vector<Finding>& findings) const;

private:
    std::map<const Rule*, Level> levels_;
    std::map<const Rule*, bool> isSelected_; // empty for all
    std::map<const Rule*, bool> isIgnored_;
};

// The level below which nothing makes the check fail; OFF for "never". Throws UsageFailure.
Level ParseFailLevel(const std::string& name);

} // namespace tool

#endif
