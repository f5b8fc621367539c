#ifndef STARTPLAN_TOOL_SOURCE_SOURCE_FILE_H
#define STARTPLAN_TOOL_SOURCE_SOURCE_FILE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

// Counted from 1; columns in characters. Line 0 stands for the file as a whole.
struct Mark {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

enum class NodeKind : std::uint8_t { SCALAR, SEQUENCE, MAPPING };

// One use of a node: where it is written, or where its alias is.
struct NodeUse {
    std::uint32_t node = 0;
    Mark mark;
    bool isAlias = false;
};

struct SourceNode {
    NodeKind kind = NodeKind::SCALAR;
    bool isPlain = false; // a scalar without quotes
    Mark mark;
    std::uint32_t first = 0; // a scalar's text in the text store, or the items of the others
    std::uint32_t count = 0;
};

// A range of uses: the items of a sequence, or keys and values of a mapping in turn.
struct NodeUses {
    const NodeUse* data = nullptr;
    std::size_t size = 0;
    const NodeUse* begin() const { return data; }
    const NodeUse* end() const { return data + size; }
    const NodeUse& operator[](std::size_t i) const { return data[i]; }
};

enum class FileState : std::uint8_t {
    LOADED,
    UNREADABLE, // it cannot be opened or read: error and errno
    NOT_YAML,   // error and its mark
    EMPTY,      // no document in it
    REFUSED,    // must not be given to the library: error and its mark
};

using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

// One YAML file with the place of everything in it: the first document, as the library reads it, made from
// libyaml's events.
//
// Never throws for what stands in the file, and never recurses. An alias shares the node of its anchor, so
// a node may contain itself: whoever walks down must not recurse blindly.
class SourceFile {
public:
    // Reads the file as far as it goes.
    static SourceFile Read(const std::string& path);

    const std::string& Path() const { return path_; }
    FileState State() const { return state_; }
    bool IsLoaded() const { return state_ == FileState::LOADED; }
    // Why the state is not LOADED, in words; where; and the errno of an unreadable file.
    const std::string& Error() const { return error_; }
    Mark ErrorMark() const { return errorMark_; }
    int ErrorNumber() const { return errorNumber_; }
    // Where a second document begins, which the library never looks at.
    std::optional<Mark> ExtraDocument() const { return extraDocument_; }
    std::size_t Bytes() const { return bytes_.size(); }
    // The same for two paths that lead to one file; zeros for a file that could not be opened.
    const FileIdentity& Identity() const { return identity_; }
    // All that is in the file, as far as it was read.
    std::string_view Content() const { return bytes_; }

    // @pre for the rest: IsLoaded().
    NodeUse Root() const { return root_; }
    const SourceNode& Node(const NodeUse& use) const { return nodes_[use.node]; }
    NodeKind Kind(const NodeUse& use) const { return nodes_[use.node].kind; }
    // The text as the library sees it: up to the first NUL, empty for a sequence or mapping.
    std::string_view Text(const NodeUse& use) const;
    // The items of a sequence; none for the other kinds.
    NodeUses Items(const NodeUse& use) const;
    // Keys and values of a mapping in turn, an even number; none for the other kinds.
    NodeUses Pairs(const NodeUse& use) const;
    // The first value of the key, or null.
    const NodeUse* Find(const NodeUse& mapping, std::string_view key) const;
    // The key's own use, or null.
    const NodeUse* FindKey(const NodeUse& mapping, std::string_view key) const;

    // One line of the file without its end, counted from 1; empty beyond the last.
    std::string_view Line(std::uint32_t number) const;
    // The rest of the mark's line from there on; empty for a column far to the right, where counting
    // characters for each of many marks would take too long.
    std::string_view LineFrom(const Mark& mark) const;

private:
    friend class SourceFileReader;

    std::string path_;
    FileState state_ = FileState::UNREADABLE;
    std::string error_;
    Mark errorMark_;
    int errorNumber_ = 0;
    std::optional<Mark> extraDocument_;
    FileIdentity identity_;
    std::string bytes_;
    NodeUse root_;
    std::vector<SourceNode> nodes_;
    std::vector<NodeUse> uses_;
    std::string text_;
    mutable std::vector<std::uint32_t> lineStarts_; // made when a line is asked for
};

} // namespace tool

#endif
