#include "tool/text/suggest.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

char Lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

} // namespace

std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t limit)
{
    const std::size_t apart = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
    if (apart > limit) {
        return limit + 1;
    }
    std::vector<std::size_t> before(b.size() + 1);
    std::vector<std::size_t> above(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        above[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        std::size_t best = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool isSame = Lower(a[i - 1]) == Lower(b[j - 1]);
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (isSame ? 0 : 1)});
            if (i > 1 && j > 1 && Lower(a[i - 1]) == Lower(b[j - 2]) && Lower(a[i - 2]) == Lower(b[j - 1])) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
            best = std::min(best, row[j]);
        }
        if (best > limit) {
            return limit + 1;
        }
        before.swap(above);
        above.swap(row);
    }
    return std::min(above[b.size()], limit + 1);
}

std::string Nearest(std::string_view word, const std::vector<std::string>& candidates)
{
    std::string nearest;
    std::size_t limit = std::min<std::size_t>(3, (word.size() + 2) / 3);
    for (const std::string& candidate : candidates) {
        const std::size_t distance = EditDistance(word, candidate, limit);
        if (distance > limit || candidate.empty()) {
            continue;
        }
        nearest = candidate;
        if (distance == 0) {
            break;
        }
        limit = distance - 1;
    }
    return nearest;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& candidates)
{
    const std::string nearest = Nearest(word, candidates);
    return nearest.empty() ? std::string() : fmt::format(", did you mean \"{}\"?", Printable(nearest));
}

} // namespace tool
