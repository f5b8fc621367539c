#include "tool/check/meant_names.h"

#include <algorithm>
#include <cctype>

#include "tool/library/log_collector.h"
#include "tool/patterns/name_pattern.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

// Enough for every name of an ordinary tree, and less than a second for the largest.
constexpr std::size_t kMostMatches = 200'000;
constexpr std::size_t kMostComparisons = 300'000;

std::string Folded(std::string_view name)
{
    std::string folded;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isspace(byte) == 0) {
            folded += static_cast<char>(std::tolower(byte));
        }
    }
    return folded;
}

} // namespace

MeantNames::MeantNames(const DependencyIndex& index)
    : index_(index), matchesLeft_(kMostMatches), comparisonsLeft_(kMostComparisons)
{
    names_.assign(index.Names().begin(), index.Names().end());
    for (std::size_t name = 0; name < names_.size(); ++name) {
        folded_.emplace(Folded(names_[name]), name);
        const std::string_view text = index.Names()[name];
        if (ParseAndDepend().IsDynamicPara(names_[name])) {
            patterns_.emplace_back(text.substr(0, text.find('<')), name);
        }
    }
    std::sort(patterns_.begin(), patterns_.end());
}

std::size_t MeantNames::PatternFor(std::string_view name)
{
    const LogCollector unheard;
    const std::string text(name);
    for (std::size_t length = 0; length <= name.size() && !patterns_.empty(); ++length) {
        const std::string_view beginning = name.substr(0, length);
        auto at =
            std::lower_bound(patterns_.begin(), patterns_.end(), std::make_pair(beginning, std::size_t{0}));
        for (; at != patterns_.end() && at->first == beginning && matchesLeft_ > 0; ++at) {
            --matchesLeft_;
            if (ParseAndDepend().IsDynamicParaMatch(names_[at->second], text)) {
                return at->second;
            }
        }
    }
    return kNone;
}

std::size_t MeantNames::NearMissOf(std::string_view name) const
{
    const auto found = folded_.find(Folded(name));
    return found == folded_.end() ? kNone : found->second;
}

std::size_t MeantNames::NearestTo(std::string_view name)
{
    const auto known = nearest_.find(name);
    if (known != nearest_.end()) {
        return known->second;
    }
    if (comparisonsLeft_ < names_.size()) {
        return kNone;
    }
    comparisonsLeft_ -= names_.size();
    const std::string nearest = Nearest(name, names_);
    return nearest_[std::string(name)] = nearest.empty() ? kNone : index_.Find(nearest);
}

} // namespace tool
