#ifndef STARTPLAN_TOOL_COMMANDS_CONFIGURATION_DIFF_H
#define STARTPLAN_TOOL_COMMANDS_CONFIGURATION_DIFF_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "tool/command_line/session.h"
#include "tool/configuration/configuration.h"
#include "tool/plan/request_plan.h"
#include "tool/simulation/time_line.h"

namespace tool {

struct SettingChange {
    std::string name;
    Json before;
    Json after;
};

// An application that is there before and after.
struct AppChange {
    std::string name;
    std::vector<SettingChange> settings; // in the library's order; all but "depends"
    std::vector<std::string> dependsAdded;
    std::vector<std::string> dependsRemoved;
};

// A name and one that it depends on, or depends on in vain.
using NamePair = std::pair<std::string, std::string>;

// What comes of a request for all.
struct RequestOutcome {
    std::uint32_t result = 0;
    std::vector<std::vector<std::string>> cycles; // the members of each
    std::map<std::string, std::size_t> roundOf;   // counted from 1
    std::size_t rounds = 0;
    Milliseconds makespan = 0; // with the times that "simulate" takes by itself
    std::vector<std::string> critical;

    // 0 for a name that is not handed out.
    std::size_t RoundOf(const std::string& name) const;
};

struct RequestChange {
    RequestOutcome before;
    RequestOutcome after;
    std::vector<std::string> moved; // there before and after, in another round, or no longer in any

    bool IsSame() const;
};

// Everything in ascending order.
struct ConfigurationDiff {
    std::uint32_t resultBefore = 0;
    std::uint32_t resultAfter = 0;
    std::vector<std::string> added;
    std::vector<std::string> removed;
    std::vector<AppChange> changed;
    std::vector<NamePair> edgesAdded;
    std::vector<NamePair> edgesRemoved;
    std::vector<NamePair> droppedAdded; // an application and what it misses
    std::vector<NamePair> droppedRemoved;
    std::vector<std::string> incompleteAdded;
    std::vector<std::string> incompleteRemoved;
    RequestChange start;
    RequestChange stop;

    bool IsSame() const;
};

// What the device has afterwards and before. The order of files and entries counts for nothing, nor does
// the folder that the whole tree lies in.
ConfigurationDiff Compare(const Configuration& before, const Configuration& after);

} // namespace tool

#endif
