#ifndef STARTPLAN_DEPEND_NAME_PATTERNS_H
#define STARTPLAN_DEPEND_NAME_PATTERNS_H

#include <cstddef>
#include <string_view>

namespace startplan {

// What a pattern and a name may measure, in bytes.
inline constexpr std::size_t kLongestName = 1024;

inline bool HasMatchableLength(std::string_view text)
{
    return !text.empty() && text.size() <= kLongestName;
}

// ParseAndDepend::IsDynamicParaMatch(), for callers within the library.
bool MatchesPattern(std::string_view pattern, std::string_view name);

// The literal that every name matching `pattern` begins with: all in front of the first dynamic piece.
std::string_view LeadingLiteral(std::string_view pattern);

} // namespace startplan

#endif
