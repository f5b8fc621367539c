#include "tool/check/check_pattern_text.h"

#include <utility>
#include <vector>

#include <fmt/format.h>

#include "tool/check/finding_at.h"
#include "tool/patterns/name_pattern.h"
#include "tool/rules/rules_patterns.h"
#include "tool/text/name_list.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

bool IsDigits(std::string_view text)
{
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Why the library cannot read an item of a list.
std::string ReasonOf(std::string_view item)
{
    const std::size_t dash = item.find('-');
    if (item.find_first_of(" \t") != std::string_view::npos) {
        return "holds a blank";
    }
    if (dash != std::string_view::npos && item.find('-', dash + 1) != std::string_view::npos) {
        return "has more than one \"-\"";
    }
    const std::string_view first = item.substr(0, dash);
    const std::string_view last = dash == std::string_view::npos ? "" : item.substr(dash + 1);
    if (!IsDigits(first) || !IsDigits(last)) {
        return "is no number";
    }
    const bool isRead = ReadIntervals(std::string(first)) && ReadIntervals(std::string(last));
    return isRead ? "counts down" : "goes beyond 4294967295";
}

std::vector<std::string_view> ItemsOf(std::string_view list)
{
    std::vector<std::string_view> items;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(','), list.size());
        items.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return items;
}

class PatternTextCheck {
public:
    PatternTextCheck(const SourceTree& tree, const SourceEntry& entry, Findings& findings)
        : tree_(tree), entry_(entry), findings_(findings), name_(tree.FileOf(entry).Text(entry.key))
    {}

    void Run()
    {
        if (name_.size() > kLongestName) {
            findings_.Add(FindingAt(tree_, entry_.visit, entry_.key, kNameTooLong,
                                    {fmt::format("a name of {} bytes; the library takes {} at the most",
                                                 name_.size(), kLongestName),
                                     "no request finds the application, and each look-up that meets the name "
                                     "logs an error",
                                     "give the application a shorter name"}));
            return;
        }
        if (!ParseAndDepend().IsDynamicPara(name_)) {
            return;
        }
        pieces_ = PiecesOf(name_);
        std::size_t begin = 0;
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            CheckPiece(i, begin);
            begin += pieces_[i].Written().size();
        }
    }

private:
    void CheckPiece(std::size_t i, std::size_t begin)
    {
        const PatternPiece& piece = pieces_[i];
        const bool isLast = i + 1 == pieces_.size();
        if (piece.IsText()) {
            if (isLast) {
                AddUnanchoredTail(piece, begin);
            }
            return;
        }
        if (piece.IsNumber() && !ReadIntervals(piece.text)) {
            AddBadInterval(piece, begin);
            return;
        }
        if (piece.IsNumber() &&
            (piece.text.find(",,") != std::string::npos || piece.text.rfind(',', 0) == 0)) {
            Add(kEmptyIntervalItem, piece, begin,
                {fmt::format("an empty item in {} counts as 0", Quote(piece.Written())),
                 fmt::format("0 is in the list, and no digits in the place of {} count as 0, too",
                             Quote(piece.Written())),
                 "take the comma out, or write the number that is missing"});
        }
        if (!isLast && !pieces_[i + 1].IsText()) {
            AddAdjacent(piece, pieces_[i + 1], begin);
        }
    }

    void AddUnanchoredTail(const PatternPiece& piece, std::size_t begin)
    {
        Add(kUnanchoredTail, piece, begin,
            {fmt::format("{} also matches every longer name", Quote(name_)),
             fmt::format("what follows {} in a name is not looked at: a name that is longer by mistake is "
                         "served",
                         Quote(piece.text)),
             "end the name with a parameter, if possible"});
    }

    void AddBadInterval(const PatternPiece& piece, std::size_t begin)
    {
        std::string reason = "the list cannot be read";
        for (const std::string_view item : ItemsOf(piece.text)) {
            if (!ReadIntervals(std::string(item))) {
                reason = fmt::format("{} {}", Quote(item), ReasonOf(item));
                break;
            }
        }
        const bool isStar = piece.text.find('*') != std::string::npos;
        Add(kBadInterval, piece, begin,
            {fmt::format("{} matches no name: {}", Quote(name_), reason),
             "no request finds a member of the family, and each look-up that meets it logs an error",
             isStar ? "write <*> for any text, or <*PATH> for any text without \"..\""
                    : "write numbers and ranges with commas, as in <1-3,5>"});
    }

    void AddAdjacent(const PatternPiece& piece, const PatternPiece& next, std::size_t begin)
    {
        const bool isDead = piece.IsNumber() && !HoldsZero(piece.text);
        Add(kAdjacentDynamic, piece, begin,
            {fmt::format("{} never gets any text: {} behind it takes it all", Quote(piece.Written()),
                         Quote(next.Written())),
             isDead ? "no digits count as 0, which is not in the list: the pattern matches no name, and no "
                      "request finds a member of the family"
                    : "the parameter is useless: whatever stands in its place belongs to the next one",
             "put some text between the two"});
    }

    // Marks the piece.
    void Add(const Rule& rule, const PatternPiece& piece, std::size_t begin, Wording wording)
    {
        Finding finding = FindingAt(tree_, entry_.visit, entry_.key, rule, std::move(wording));
        if (finding.length != 0) {
            finding.position.mark = MarkInside(tree_.FileOf(entry_), entry_.key, begin);
            finding.length = Width(piece.Written());
        }
        findings_.Add(std::move(finding));
    }

    const SourceTree& tree_;
    const SourceEntry& entry_;
    Findings& findings_;
    const std::string name_;
    std::vector<PatternPiece> pieces_;
};

} // namespace

void CheckPatternText(const Configuration& configuration, Findings& findings)
{
    const std::vector<SourceEntry>& entries = configuration.tree.Entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const EntryState state = configuration.entryStates[i];
        if (state == EntryState::KEPT || state == EntryState::DROPPED) {
            PatternTextCheck(configuration.tree, entries[i], findings).Run();
        }
    }
}

} // namespace tool
