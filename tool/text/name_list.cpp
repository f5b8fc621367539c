#include "tool/text/name_list.h"

#include <algorithm>

#include <fmt/format.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kMostNames = 3;

} // namespace

std::string Quote(std::string_view name)
{
    return fmt::format("\"{}\"", Printable(name));
}

std::string QuoteSome(const std::vector<std::string_view>& names, bool isCut)
{
    // One name more takes no more room than "and 1 more".
    const std::size_t shown = names.size() == kMostNames + 1 && !isCut ? names.size() : kMostNames;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), shown); ++i) {
        const bool isLast = i + 1 == names.size() && !isCut;
        text += fmt::format("{}{}", i == 0 ? "" : isLast ? " and " : ", ", Quote(names[i]));
    }
    if (names.size() > shown || isCut) {
        text += fmt::format(" and {}{} more", isCut ? "at least " : "",
                            names.size() - std::min(names.size(), shown));
    }
    return text;
}

} // namespace tool
