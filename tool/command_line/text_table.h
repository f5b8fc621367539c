#ifndef STARTPLAN_TOOL_COMMAND_LINE_TEXT_TABLE_H
#define STARTPLAN_TOOL_COMMAND_LINE_TEXT_TABLE_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "tool/command_line/session.h"

namespace tool {

enum class Align { LEFT, RIGHT };

// Text in columns. Cells are made printable when they are added.
class TextTable {
public:
    // A column that may be cut loses the beginning of its cells where the table is too wide.
    void AddColumn(std::string title, Align align = Align::LEFT, bool mayBeCut = false);
    // Which columns are left out, one after the other, where cutting is not enough.
    void LeaveOutFirst(std::vector<std::string> titles) { leftOutFirst_ = std::move(titles); }
    void AddRow(std::vector<std::string> cells);

    // The table with its titles, as wide as the session's terminal at most, if that is possible at all. Tells
    // which columns were left out.
    std::string Render(const Session& session) const;

private:
    struct Column {
        std::string title;
        Align align;
        bool mayBeCut;
    };

    std::vector<std::size_t> NaturalWidths() const;
    // Cuts down to `width`, as far as that goes. A column of width 0 is left out.
    void Cut(std::vector<std::size_t>& widths, std::size_t width) const;
    std::vector<std::size_t> Widths(std::size_t width) const;
    std::string LeftOutRemark(const std::vector<std::size_t>& widths) const;
    std::string RenderRow(const std::vector<std::string>& cells,
                          const std::vector<std::size_t>& widths) const;

    std::vector<Column> columns_;
    std::vector<std::string> leftOutFirst_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace tool

#endif
