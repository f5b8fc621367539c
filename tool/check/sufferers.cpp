#include "tool/check/sufferers.h"

namespace tool {

namespace {

constexpr std::size_t kMostSteps = 2000;

} // namespace

SuffererSearch::Result SuffererSearch::Find(const std::vector<std::size_t>& names)
{
    ++search_;
    Result result;
    std::vector<std::size_t> queue = names;
    for (const std::size_t name : names) {
        seenIn_[name] = search_;
    }
    std::size_t steps = 0;
    for (std::size_t at = 0; at < queue.size(); ++at) {
        for (const std::size_t dependant : index_.DependantsOf(queue[at])) {
            if (++steps > kMostSteps) {
                result.isCut = true;
                return result;
            }
            if (seenIn_[dependant] != search_ && !index_.IsDropped(dependant)) {
                seenIn_[dependant] = search_;
                queue.push_back(dependant);
                result.names.push_back(index_.Names()[dependant]);
            }
        }
    }
    return result;
}

} // namespace tool
