#ifndef STARTPLAN_BENCH_GENERATE_TREE_H
#define STARTPLAN_BENCH_GENERATE_TREE_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

// Inputs of a chosen size, the same on every machine for the same seed.
namespace generate {

struct TreeShape {
    std::size_t applications = 0;
    std::size_t startupFiles = 1; // files that hold the entries
    std::size_t walkedFiles = 1;  // the top-level file and those below it; a walk takes 199 at the most
    std::size_t dependencies = 0; // in all; each application depends on earlier ones only
    bool allMissing = false;      // every dependency names an application that does not exist
    std::uint32_t seed = 1;
};

// What was written, in the order in which it is read.
struct Tree {
    std::string topLevel;
    std::vector<std::string> walkedFiles;
    std::vector<std::string> startupFiles;
    std::vector<std::string> names;     // of the applications
    std::vector<std::string> userNames; // of the entries that give their owner by name
    std::vector<std::string> groupNames;
};

// Writes the tree into `folder`, which exists and is empty. Every entry has 21 keys of all kinds; one in
// sixteen gives its owner by the names of accounts, the others by numbers.
// Throws std::runtime_error where a file cannot be written.
Tree WriteTree(const std::string& folder, const TreeShape& shape);

// The name of one application, of 8 to 24 bytes; no name begins with another one.
std::string ApplicationName(std::size_t number);

// From name to the names it depends on.
using Table = std::map<std::string, std::set<std::string>>;

// Each application depends on `each` earlier ones, or on all where there are fewer.
Table RandomTable(std::size_t applications, std::size_t each, std::uint32_t seed = 1);
// Each application depends on the one before.
Table Chain(std::size_t applications);
// All depend on the first one, and the last one depends on all.
Table Wide(std::size_t applications);
// RandomTable(), in which each application also depends on a name of its own that is no key.
Table TableWithMissingNames(std::size_t applications, std::size_t each, std::uint32_t seed = 1);
// RandomTable(), whose first application also depends on the last one.
Table TableWithCycle(std::size_t applications, std::size_t each, std::uint32_t seed = 1);

} // namespace generate

#endif
