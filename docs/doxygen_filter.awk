# Makes of a public header what Doxygen reads. The headers' comments are set for reading as they stand; Markdown
# wants some of it said by empty lines.
#
# - An indented list of outcomes stands right below its sentence and becomes a block of its own.
# - The text of @pre and @return goes on in indented lines; an unindented line behind them begins a new paragraph.
# - A row of a table goes on in the next line under an empty first cell; Markdown has one line for a row.
# - What the library keeps hidden is left out, although it stands in a public part of a class.

function empty_line(line) {
    print substr(line, 1, index(line, "///") + 2)
}

function flush_row() {
    if (row != "") {
        print row
    }
    row = ""
}

# Adds the cells of a line to those of the row above it.
function join_row(line,    cells, more, count, i) {
    count = split(row, cells, "|")
    split(line, more, "|")
    row = cells[1]
    for (i = 2; i < count; ++i) {
        gsub(/^ +| +$/, "", more[i])
        sub(/ +$/, "", cells[i])
        row = row "|" cells[i] " " more[i] " "
    }
    row = row "|"
}

/visibility\("hidden"\)/ { is_hidden = 1 }
is_hidden {
    is_hidden = !/;$/
    next
}

/^ *\/\/\/ \| +\|/ {
    join_row($0)
    next
}
{ flush_row() }
/^ *\/\/\/ \|/ {
    row = $0
    next
}

/^ *\/\/\/ @/ {
    is_tag = 1
    is_list = 0
    print
    next
}
/^ *\/\/\/     / {
    if (!is_list && !is_tag && !was_empty) {
        empty_line($0)
    }
    is_list = !is_tag
    print
    next
}
{
    if (is_tag && /^ *\/\/\/ /) {
        empty_line($0)
    }
    is_tag = 0
    is_list = 0
    was_empty = /^ *\/\/\/$/
    print
}
END { flush_row() }
