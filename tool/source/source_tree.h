#ifndef STARTPLAN_TOOL_SOURCE_SOURCE_TREE_H
#define STARTPLAN_TOOL_SOURCE_SOURCE_TREE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "tool/source/source_file.h"

namespace tool {

inline constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// A place as it is shown: "top.yaml:3:5"; "top.yaml" alone for a file as a whole.
struct Position {
    std::string file;
    Mark mark;
};

std::string ToText(const Position& position);

enum class FileRole : std::uint8_t { TOP_LEVEL, SUB_STARTUP, STARTUP };

// One naming of a file, in the order in which the library takes them up: top-level and sub-startup files
// as they are walked, then the startup files.
struct Visit {
    FileRole role = FileRole::TOP_LEVEL;
    std::string path;           // as it is opened: with its placeholders replaced
    std::size_t file = kNone;   // in SourceTree::files; kNone for a path that the library refuses to open
    std::size_t parent = kNone; // the visit that names it; kNone for the top-level file
    NodeUse item;               // the naming list item, in the parent's file
};

// One pair of a startup file's root mapping, complete or not.
struct SourceEntry {
    std::size_t visit = 0;
    NodeUse key;
    NodeUse value;
};

enum class RefusalKind : std::uint8_t { FILE, EMPTY_PLACEHOLDER };

// Something that must not reach the library.
struct Refusal {
    Position position;
    std::string reason;
    std::size_t visit = kNone; // the visit whose file is refused, or which holds the refused item
    RefusalKind kind = RefusalKind::FILE;
};

// The files that the library reads below a top-level file, with the place of everything in them, in the
// library's order. It says where things stand, never whether they are right: that is the library's part.
class SourceTree {
public:
    // Walks the tree as the library does: depth first, at most 200 top-level and sub-startup files. Every
    // distinct path is read once.
    static SourceTree Read(const std::string& top, const std::map<std::string, std::string>& replaceData);

    const std::vector<Visit>& Visits() const { return visits_; }
    const std::vector<SourceEntry>& Entries() const { return entries_; }
    const std::deque<SourceFile>& Files() const { return files_; }
    const std::vector<Refusal>& Refusals() const { return refusals_; }
    // Whether the walk was cut off at the library's limit.
    bool IsCutOff() const { return isCutOff_; }

    // @pre the visit's file is not kNone.
    const SourceFile& FileOf(std::size_t visit) const { return files_[visits_[visit].file]; }
    bool IsLoaded(std::size_t visit) const;
    const SourceFile& FileOf(const SourceEntry& entry) const { return FileOf(entry.visit); }

    Position PositionOf(std::size_t visit, const NodeUse& use) const;
    // Where the entry's key stands.
    Position PositionOf(const SourceEntry& entry) const { return PositionOf(entry.visit, entry.key); }
    // The item of the entry's "depends" list with this text; the entry's key if there is none.
    Position PositionOfDependency(const SourceEntry& entry, std::string_view name) const;
    // The chain of namings that leads to the visit's file: "top.yaml:3 → sub.yaml:7 → base.yaml".
    std::string ChainTo(std::size_t visit) const;
    // The entries with this name, in order.
    const std::vector<std::size_t>& EntriesNamed(const std::string& name) const;

private:
    friend class SourceTreeWalk;

    std::vector<Visit> visits_;
    std::vector<SourceEntry> entries_;
    std::deque<SourceFile> files_; // grows without moving what views point into
    std::vector<Refusal> refusals_;
    std::unordered_map<std::string, std::vector<std::size_t>> entriesByName_;
    bool isCutOff_ = false;
};

} // namespace tool

#endif
