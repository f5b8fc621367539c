#ifndef STARTPLAN_TOOL_CHECK_SUFFERERS_H
#define STARTPLAN_TOOL_CHECK_SUFFERERS_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "tool/configuration/dependency_index.h"

namespace tool {

// Who cannot go on because of names that never start: those that need one of them, and so on.
class SuffererSearch {
public:
    explicit SuffererSearch(const DependencyIndex& index) : index_(index), seenIn_(index.Size()) {}

    struct Result {
        std::vector<std::string_view> names; // the nearest first
        bool isCut = false;                  // there may be more: the search is short, as it is made often
    };

    // Without the names themselves, and without those that are dropped: they have troubles of their own.
    Result Find(const std::vector<std::size_t>& names);

private:
    const DependencyIndex& index_;
    std::vector<std::size_t> seenIn_; // the last search in which each name was met, from 1
    std::size_t search_ = 0;
};

} // namespace tool

#endif
