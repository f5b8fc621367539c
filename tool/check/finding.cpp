#include "tool/check/finding.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

#include "tool/text/printable.h"

namespace tool {

namespace {

auto KeyOf(const Finding& finding)
{
    const Position& position = finding.position;
    return std::make_tuple(std::string_view(position.file), position.mark.line, position.mark.column,
                           std::string_view(finding.rule->id), std::string_view(finding.message));
}

// The length of the quotation mark before a scalar that is written exactly as its text, in one line.
std::optional<std::size_t> QuoteOf(const SourceFile& file, const NodeUse& use)
{
    if (use.isAlias || file.Kind(use) != NodeKind::SCALAR) {
        return std::nullopt;
    }
    const std::string_view text = file.Text(use);
    std::string_view written = file.LineFrom(use.mark);
    const std::size_t quote = file.Node(use).isPlain ? 0 : 1;
    if (written.size() < text.size() + 2 * quote || written.substr(quote, text.size()) != text) {
        return std::nullopt;
    }
    const bool isQuoted = quote == 0 || ((written.front() == '"' || written.front() == '\'') &&
                                         written[quote + text.size()] == written.front());
    return isQuoted ? std::optional<std::size_t>(quote) : std::nullopt;
}

} // namespace

std::vector<Finding> Findings::TakeSorted()
{
    std::vector<Finding> sorted = std::exchange(findings_, {});
    SortFindings(sorted);
    return sorted;
}

void SortFindings(std::vector<Finding>& findings)
{
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return KeyOf(a) < KeyOf(b); });
    const auto isSame = [](const Finding& a, const Finding& b) { return KeyOf(a) == KeyOf(b); };
    findings.erase(std::unique(findings.begin(), findings.end(), isSame), findings.end());
}

std::size_t LengthOf(const SourceFile& file, const NodeUse& use)
{
    const auto quote = QuoteOf(file, use);
    return quote ? Width(file.Text(use)) + 2 * *quote : 0;
}

Mark MarkInside(const SourceFile& file, const NodeUse& use, std::size_t byte)
{
    const auto quote = QuoteOf(file, use);
    Mark mark = use.mark;
    if (quote) {
        mark.column += static_cast<std::uint32_t>(*quote + Width(file.Text(use).substr(0, byte)));
    }
    return mark;
}

} // namespace tool
