#include "tool/graph/graph_tree.h"

#include <deque>
#include <set>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "tool/text/printable.h"

namespace tool {

namespace {

// Deeper branches go on at the left edge: in a chain of ten thousand the indentation alone would take
// hundreds of megabytes.
constexpr std::size_t kDeepest = 40;

class TreePrinter {
public:
    TreePrinter(const GraphPicture& picture, bool isUpwards, const Session& session)
        : picture_(picture), session_(session), below_(isUpwards ? WaitedForBy(picture) : WaitsFor(picture)),
          isPrinted_(picture.nodes.size()), isOpen_(picture.nodes.size()), isWaiting_(picture.nodes.size())
    {
        for (const GraphEdge& edge : picture.edges) {
            if (edge.isHighlighted) {
                marked_.insert(isUpwards ? std::make_pair(edge.to, edge.from)
                                         : std::make_pair(edge.from, edge.to));
            }
        }
    }

    std::string Print()
    {
        std::vector<bool> hasAbove(picture_.nodes.size());
        for (Vertex node = 0; node < below_.size(); ++node) {
            for (const Vertex other : below_[node]) {
                hasAbove[other] = hasAbove[other] || other != node;
            }
        }
        for (Vertex node = 0; node < picture_.nodes.size(); ++node) {
            if (!hasAbove[node]) {
                PrintFrom(node);
            }
        }
        // What is left has a cycle above it.
        for (Vertex node = 0; node < picture_.nodes.size(); ++node) {
            if (!isPrinted_[node]) {
                PrintFrom(node);
            }
        }
        return std::move(text_);
    }

private:
    struct Frame {
        Vertex node;
        std::size_t next;
    };

    void PrintFrom(Vertex root)
    {
        PrintRoot(root, "");
        while (!continued_.empty()) {
            const Vertex node = continued_.front();
            continued_.pop_front();
            isWaiting_[node] = false;
            PrintRoot(node, " (continued)");
        }
    }

    void PrintRoot(Vertex root, const char* remark)
    {
        text_ += NameOf(root) + remark + StateOf(root) + "\n";
        Open(root);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            if (frame.next == below_[frame.node].size()) {
                isOpen_[frame.node] = false;
                frames_.pop_back();
                if (!indentWidths_.empty()) {
                    indent_.resize(indent_.size() - indentWidths_.back());
                    indentWidths_.pop_back();
                }
                continue;
            }
            const Vertex parent = frame.node;
            const Vertex node = below_[parent][frame.next++];
            PrintBranch(parent, node, frame.next == below_[parent].size());
        }
    }

    void PrintBranch(Vertex parent, Vertex node, bool isLast)
    {
        const bool isMarked = marked_.count({parent, node}) != 0;
        text_ +=
            indent_ + session_.In(isMarked ? Color::RED : Color::DIM, isLast ? "└─ " : "├─ ") + NameOf(node);
        const bool isLeaf = below_[node].empty();
        const bool isTooDeep = !isPrinted_[node] && !isLeaf && frames_.size() >= kDeepest;
        if (isOpen_[node]) {
            text_ += node == parent ? " (waits for itself)" : " (a cycle: it stands above)";
        } else if (isTooDeep || isWaiting_[node]) {
            text_ += " (see below)";
        } else if (isPrinted_[node] && !isLeaf) {
            text_ += " (see above)";
        }
        text_ += StateOf(node) + "\n";
        if (isPrinted_[node] || isLeaf) {
            isPrinted_[node] = true;
            return;
        }
        if (isTooDeep) {
            isPrinted_[node] = isWaiting_[node] = true;
            continued_.push_back(node);
            return;
        }
        const std::string_view step = isLast ? "   " : "│  ";
        indent_ += step;
        indentWidths_.push_back(step.size());
        Open(node);
    }

    void Open(Vertex node)
    {
        isPrinted_[node] = isOpen_[node] = true;
        frames_.push_back({node, 0});
    }

    std::string NameOf(Vertex node) const
    {
        const std::string name = Printable(picture_.nodes[node].name);
        return picture_.nodes[node].isHighlighted ? session_.In(Color::BOLD, name) + " *" : name;
    }

    std::string StateOf(Vertex node) const
    {
        const GraphNode& one = picture_.nodes[node];
        std::string text;
        if (one.state != NodeState::KEPT) {
            const char* state = one.state == NodeState::DROPPED ? " [dropped]" : " [not configured]";
            text += session_.In(Color::RED, state);
        }
        if (!one.group.empty()) {
            text += session_.In(Color::DIM, fmt::format("  [{}]", Printable(one.group)));
        }
        return text;
    }

    const GraphPicture& picture_;
    const Session& session_;
    Successors below_;
    std::set<std::pair<Vertex, Vertex>> marked_;
    std::vector<bool> isPrinted_;
    std::vector<bool> isOpen_;    // on the way from the root to the current node
    std::vector<bool> isWaiting_; // its branch is to be continued
    std::vector<Frame> frames_;
    std::deque<Vertex> continued_;
    std::string indent_;
    std::vector<std::size_t> indentWidths_; // in bytes, of each level below the root
    std::string text_;
};

} // namespace

std::string ToTree(const GraphPicture& picture, bool isUpwards, const Session& session)
{
    return TreePrinter(picture, isUpwards, session).Print();
}

} // namespace tool
