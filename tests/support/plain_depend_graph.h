#ifndef STARTPLAN_TESTS_SUPPORT_PLAIN_DEPEND_GRAPH_H
#define STARTPLAN_TESTS_SUPPORT_PLAIN_DEPEND_GRAPH_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include <syslog.h>

#include "startplan/depend_graph.h"
#include "tests/support/log_capture.h"

namespace test_support {

using GraphInput = std::map<std::string, std::set<std::string>>;

// What DependGraph promises, done in the plainest way: the table is walked once for each name taken from
// the queue. Quadratic, and worse than that where HasCycle() is called after pops; for small graphs.
//
// The order of the library's table shows in the names that HasCycle() logs. Its plain table is of the same
// type and filled in the same order, so the orders agree as long as neither needs room for missing names
// (where they do, how much room is made is nobody's promise). HasRoomForMissing() tells.
class PlainDependGraph {
public:
    explicit PlainDependGraph(Lines& log) : log_(log) {}

    void Update(const GraphInput& depends)
    {
        Clear();
        vertexNum_ = static_cast<std::uint32_t>(depends.size());
        for (const auto& [name, names] : depends) {
            vertexStatus_[name].depends = names;
        }
    }

    bool HasCycle()
    {
        MakeRoomForMissing();
        std::deque<std::string> queue;
        std::vector<std::string> sorted;
        for (const auto& [name, status] : vertexStatus_) {
            if (AreAllPopped(status.depends)) {
                queue.push_back(name);
            }
        }
        while (!queue.empty()) {
            const std::string taken = queue.front();
            queue.pop_front();
            sorted.push_back(taken);
            vertexStatus_[taken].state = VertexState::POPPED;
            for (const auto& [name, status] : vertexStatus_) {
                if (status.depends.count(taken) != 0 && AreAllPopped(status.depends)) {
                    queue.push_back(name);
                }
            }
        }
        for (auto& entry : vertexStatus_) {
            entry.second.state = VertexState::WAITING;
        }
        if (sorted.size() == vertexStatus_.size()) {
            return false;
        }
        Log(LOG_ERR, "The Graph has cycle. the cycle is :" + AllBut(sorted));
        return true;
    }

    std::set<std::string> GetNoDependVertices()
    {
        MakeRoomForMissing();
        noDependVertices_.clear();
        for (auto& [name, status] : vertexStatus_) {
            if (outVertices_.count(name) != 0) {
                continue;
            }
            if (AreAllPopped(status.depends) && status.state != VertexState::POPPED) {
                status.state = VertexState::READY;
                noDependVertices_.insert(name);
            }
        }
        outVertices_.insert(noDependVertices_.begin(), noDependVertices_.end());
        return noDependVertices_;
    }

    bool Pop(const std::string& name)
    {
        if (outVertices_.count(name) == 0) {
            Log(LOG_WARNING, std::string("DependGraph Pop: ") + name.c_str() + " cannot found in graph");
            return false;
        }
        Log(LOG_INFO, "DependGraph Pop: " + name);
        vertexStatus_[name].state = VertexState::POPPED;
        outVertices_.erase(name);
        ++popNum_;
        return true;
    }

    bool IsEmpty() const { return popNum_ == vertexNum_; }

    void Clear()
    {
        vertexNum_ = 0;
        popNum_ = 0;
        noDependVertices_.clear();
        outVertices_.clear();
        vertexStatus_.clear();
    }

    bool HasRoomForMissing() const
    {
        return static_cast<float>(vertexStatus_.size() + Missing().size()) <=
               static_cast<float>(vertexStatus_.bucket_count()) * vertexStatus_.max_load_factor();
    }

private:
    std::set<std::string> Missing() const
    {
        std::set<std::string> missing;
        for (const auto& entry : vertexStatus_) {
            for (const std::string& name : entry.second.depends) {
                if (vertexStatus_.count(name) == 0) {
                    missing.insert(name);
                }
            }
        }
        return missing;
    }

    // No insertion may rehash the table under a walk.
    void MakeRoomForMissing()
    {
        if (!HasRoomForMissing()) {
            vertexStatus_.reserve(vertexStatus_.size() + Missing().size());
        }
    }

    // A name that is missing becomes a waiting vertex here, and the walk around this may meet it.
    bool AreAllPopped(const std::set<std::string>& depends)
    {
        for (const std::string& name : depends) {
            if (vertexStatus_[name].state != VertexState::POPPED) {
                return false;
            }
        }
        return true;
    }

    std::string AllBut(const std::vector<std::string>& sorted) const
    {
        const std::set<std::string> left(sorted.begin(), sorted.end());
        std::string names;
        for (const auto& entry : vertexStatus_) {
            if (left.count(entry.first) == 0) {
                names += entry.first + " ";
            }
        }
        return names;
    }

    // A text ends at its first zero byte, as printf sees it.
    void Log(int priority, const std::string& text) { log_.push_back({priority, text.c_str(), {}}); }

    std::uint32_t vertexNum_ = 0;
    std::uint32_t popNum_ = 0;
    std::set<std::string> noDependVertices_;
    std::set<std::string> outVertices_;
    std::unordered_map<std::string, VertexStatus> vertexStatus_;
    Lines& log_;
};

} // namespace test_support

#endif
