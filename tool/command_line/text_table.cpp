#include "tool/command_line/text_table.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <fmt/format.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kLeastWidth = 12; // of a column that is cut

// Of the columns that are not left out.
std::size_t Total(const std::vector<std::size_t>& widths)
{
    std::size_t total = 0;
    for (const std::size_t width : widths) {
        total += width == 0 ? 0 : width + (total == 0 ? 0 : kGap);
    }
    return total;
}

} // namespace

void TextTable::AddColumn(std::string title, Align align, bool mayBeCut)
{
    columns_.push_back({std::move(title), align, mayBeCut});
}

void TextTable::AddRow(std::vector<std::string> cells)
{
    for (std::string& cell : cells) {
        cell = Printable(cell);
    }
    rows_.push_back(std::move(cells));
}

std::vector<std::size_t> TextTable::NaturalWidths() const
{
    std::vector<std::size_t> widths;
    for (const Column& column : columns_) {
        widths.push_back(Width(column.title));
    }
    for (const std::vector<std::string>& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], Width(row[i]));
        }
    }
    return widths;
}

void TextTable::Cut(std::vector<std::size_t>& widths, std::size_t width) const
{
    while (Total(widths) > width) {
        std::size_t widest = columns_.size();
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const bool isWider = widest == columns_.size() || widths[i] > widths[widest];
            widest = columns_[i].mayBeCut && isWider ? i : widest;
        }
        if (widest == columns_.size() || widths[widest] <= kLeastWidth) {
            return;
        }
        --widths[widest];
    }
}

std::vector<std::size_t> TextTable::Widths(std::size_t width) const
{
    const std::vector<std::size_t> natural = NaturalWidths();
    std::vector<std::size_t> widths = natural;
    if (width == 0) {
        return widths;
    }
    Cut(widths, width);
    for (std::size_t count = 1; count <= leftOutFirst_.size() && Total(widths) > width; ++count) {
        widths = natural;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const auto end = leftOutFirst_.begin() + static_cast<std::ptrdiff_t>(count);
            widths[i] = std::find(leftOutFirst_.begin(), end, columns_[i].title) == end ? natural[i] : 0;
        }
        Cut(widths, width);
    }
    return widths;
}

std::string TextTable::LeftOutRemark(const std::vector<std::size_t>& widths) const
{
    std::vector<std::string> titles;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (widths[i] == 0) {
            titles.push_back(columns_[i].title);
        }
    }
    return titles.empty() ? std::string() : fmt::format("(too narrow for {})", fmt::join(titles, ", "));
}

std::string TextTable::RenderRow(const std::vector<std::string>& cells,
                                 const std::vector<std::size_t>& widths) const
{
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (widths[i] == 0) {
            continue;
        }
        const std::string cell = columns_[i].mayBeCut ? CutFront(cells[i], widths[i]) : cells[i];
        const std::string fill(widths[i] - std::min(widths[i], Width(cell)), ' ');
        line += columns_[i].align == Align::RIGHT ? fill + cell : cell + fill;
        line.append(kGap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string TextTable::Render(const Session& session) const
{
    const std::vector<std::size_t> widths = Widths(session.Width());
    std::vector<std::string> titles;
    for (const Column& column : columns_) {
        titles.push_back(column.title);
    }
    std::string out = session.In(Color::BOLD, RenderRow(titles, widths)) + "\n";
    for (const std::vector<std::string>& row : rows_) {
        out += RenderRow(row, widths) + "\n";
    }
    const std::string remark = LeftOutRemark(widths);
    return remark.empty() ? out : out + session.In(Color::DIM, remark) + "\n";
}

} // namespace tool
