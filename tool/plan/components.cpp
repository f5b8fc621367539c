#include "tool/plan/components.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tool {

namespace {

constexpr Vertex kUnseen = std::numeric_limits<Vertex>::max();

// Tarjan's method with its own stack, since the depth belongs to whoever wrote the files.
class Search {
public:
    explicit Search(const Successors& successors)
        : successors_(successors), index_(successors.size(), kUnseen), low_(successors.size()),
          isOnStack_(successors.size())
    {
        found_.of.resize(successors.size());
        for (Vertex start = 0; start < successors.size(); ++start) {
            if (index_[start] == kUnseen) {
                VisitFrom(start);
            }
        }
    }

    Components Take() { return std::move(found_); }

private:
    struct Frame {
        Vertex vertex;
        std::size_t next;
    };

    void Enter(Vertex vertex)
    {
        index_[vertex] = low_[vertex] = count_++;
        stack_.push_back(vertex);
        isOnStack_[vertex] = true;
        frames_.push_back({vertex, 0});
    }

    void VisitFrom(Vertex start)
    {
        Enter(start);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            const Vertex vertex = frame.vertex;
            if (frame.next < successors_[vertex].size()) {
                const Vertex other = successors_[vertex][frame.next++];
                if (index_[other] == kUnseen) {
                    Enter(other);
                } else if (isOnStack_[other]) {
                    low_[vertex] = std::min(low_[vertex], index_[other]);
                }
                continue;
            }
            frames_.pop_back();
            if (!frames_.empty()) {
                Vertex& low = low_[frames_.back().vertex];
                low = std::min(low, low_[vertex]);
            }
            if (low_[vertex] == index_[vertex]) {
                Leave(vertex);
            }
        }
    }

    void Leave(Vertex root)
    {
        std::vector<Vertex> members;
        do {
            members.push_back(stack_.back());
            isOnStack_[stack_.back()] = false;
            found_.of[stack_.back()] = static_cast<Vertex>(found_.members.size());
            stack_.pop_back();
        } while (members.back() != root);
        std::sort(members.begin(), members.end());
        found_.members.push_back(std::move(members));
    }

    const Successors& successors_;
    std::vector<Vertex> index_;
    std::vector<Vertex> low_;
    std::vector<bool> isOnStack_;
    std::vector<Vertex> stack_;
    std::vector<Frame> frames_;
    Vertex count_ = 0;
    Components found_;
};

} // namespace

bool Components::IsCyclic(Vertex component, const Successors& successors) const
{
    const std::vector<Vertex>& own = members[component];
    const std::vector<Vertex>& next = successors[own.front()];
    return own.size() > 1 || std::find(next.begin(), next.end(), own.front()) != next.end();
}

Components FindComponents(const Successors& successors)
{
    return Search(successors).Take();
}

} // namespace tool
