#ifndef STARTPLAN_TOOL_MANUAL_ROFF_PAGE_H
#define STARTPLAN_TOOL_MANUAL_ROFF_PAGE_H

#include <set>
#include <string>
#include <string_view>

namespace tool {

// What all pages say of themselves: nothing that changes from one build to the next.
struct Edition {
    std::string version; // "1.0.0"
    std::string date;    // of the version's release, "2026-01-31"; empty before
};

// One page of the manual in man(7)'s macros.
class RoffPage {
public:
    // A part of a page.
    RoffPage() = default;
    // A page: the name as in "startplan-check", the section's number, and what the page is about.
    RoffPage(std::string_view name, int section, std::string_view summary, const Edition& edition);

    // These words are shown as what is put in, from here on.
    void AddVariables(const std::set<std::string>& variables);

    void Section(std::string_view title);
    void Subsection(std::string_view title);
    void Paragraph(std::string_view prose);
    // Roff as it is, in a line of its own.
    void Line(std::string_view roff);
    // A term, in roff, and what is to be said about it.
    void Item(std::string_view term, std::string_view prose);
    // Further paragraphs of the item before.
    void AddToItem(std::string_view prose);
    // Lines shown as they are. Of an item where `isInItem`.
    void Code(std::string_view lines, bool isInItem = false);

    const std::string& Text() const { return text_; }

private:
    void Prose(std::string_view prose);

    std::string text_;
    std::set<std::string> variables_;
};

} // namespace tool

#endif
