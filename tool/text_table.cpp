#include "tool/text_table.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "tool/printable.h"

namespace tool {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kLeastWidth = 12; // of a column that is cut

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

std::vector<std::size_t> TextTable::Widths(std::size_t width) const
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
    const auto total = [&widths] {
        return std::accumulate(widths.begin(), widths.end(), (widths.size() - 1) * kGap);
    };
    while (width != 0 && total() > width) {
        std::size_t widest = columns_.size();
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const bool isWider = widest == columns_.size() || widths[i] > widths[widest];
            widest = columns_[i].mayBeCut && isWider ? i : widest;
        }
        if (widest == columns_.size() || widths[widest] <= kLeastWidth) {
            break;
        }
        --widths[widest];
    }
    return widths;
}

std::string TextTable::RenderRow(const std::vector<std::string>& cells,
                                 const std::vector<std::size_t>& widths) const
{
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
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
    return out;
}

} // namespace tool
