#include "tool/finding.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "tool/printable.h"

namespace tool {

namespace {

auto KeyOf(const Finding& finding)
{
    const Position& position = finding.position;
    return std::make_tuple(std::string_view(position.file), position.mark.line, position.mark.column,
                           std::string_view(finding.rule->id), std::string_view(finding.message));
}

} // namespace

std::vector<Finding> Findings::TakeSorted()
{
    std::vector<Finding> sorted = std::exchange(findings_, {});
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Finding& a, const Finding& b) { return KeyOf(a) < KeyOf(b); });
    const auto isSame = [](const Finding& a, const Finding& b) { return KeyOf(a) == KeyOf(b); };
    sorted.erase(std::unique(sorted.begin(), sorted.end(), isSame), sorted.end());
    return sorted;
}

std::size_t LengthOf(const SourceFile& file, const NodeUse& use)
{
    const SourceNode& node = file.Node(use);
    const std::string_view text = file.Text(use);
    if (use.isAlias || !node.isPlain || node.kind != NodeKind::SCALAR ||
        text.find('\n') != std::string_view::npos) {
        return 0;
    }
    return Width(text);
}

} // namespace tool
