#include "startplan/depend_graph.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <syslog.h>

#include "depend/topological_sort.h"

namespace {

using startplan::VertexTable;

// The first dependency of a vertex that has not been popped.
struct Unfinished {
    const std::string* name = nullptr; // none where all are popped
    bool isMissing = false;            // it is not in the table
};

Unfinished FirstUnfinished(const VertexTable& table, const std::set<std::string>& depends)
{
    for (const std::string& name : depends) {
        const auto found = table.find(name);
        if (found == table.end()) {
            return {&name, true};
        }
        if (found->second.state != VertexState::POPPED) {
            return {&name, false};
        }
    }
    return {};
}

// What one walk over the table finds: the vertices to hand out, and the missing dependencies whose state it
// asked for.
struct Walk {
    std::set<std::string> released;
    std::vector<VertexStatus*> statuses; // of the vertices in `released`
    std::set<std::string_view> missing;
};

// With `addMissing`, a missing dependency becomes a vertex as soon as its state is asked for, and the walk
// may meet it further on; the table must have room for them all.
//
// A vertex whose state is READY is out, and one that is POPPED has all its dependencies in the table, so
// that nothing is lost by looking at the state first. After a HasCycle() in between, a vertex that is out
// is WAITING too, with all its dependencies in the table.
Walk FindReleased(VertexTable& table, const std::set<std::string>& out, bool addMissing)
{
    Walk walk;
    for (auto& [name, status] : table) {
        if (status.state != VertexState::WAITING) {
            continue;
        }
        const Unfinished unfinished = FirstUnfinished(table, status.depends);
        if (unfinished.isMissing) {
            walk.missing.insert(*unfinished.name);
            if (addMissing) {
                table.try_emplace(*unfinished.name);
            }
        }
        if (unfinished.name == nullptr && out.count(name) == 0) {
            walk.released.insert(name);
            walk.statuses.push_back(&status);
        }
    }
    return walk;
}

} // namespace

void DependGraph::Update(const std::map<std::string, std::set<std::string>>& depends)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    StartOver(depends.size());
    try {
        for (const auto& [name, names] : depends) {
            vertexStatus_.emplace(name, VertexStatus{VertexState::WAITING, names});
        }
    } catch (...) {
        StartOver(0); // half of a request must not be handed out
        throw;
    }
}

void DependGraph::TakeOver(std::map<std::string, std::set<std::string>>&& depends)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    StartOver(depends.size());
    try {
        for (auto& [name, names] : depends) {
            vertexStatus_.emplace(name, VertexStatus{VertexState::WAITING, std::move(names)});
        }
    } catch (...) {
        StartOver(0);
        throw;
    }
}

bool DependGraph::HasCycle()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    startplan::TopologicalSort sort(vertexStatus_);
    const bool hasCycle = !sort.Run();
    const std::string unordered = hasCycle ? sort.Unordered() : std::string();
    if (!sort.AreAllWaiting()) {
        for (auto& entry : vertexStatus_) {
            entry.second.state = VertexState::WAITING;
        }
    }
    if (hasCycle) {
        syslog(LOG_ERR, "The Graph has cycle. the cycle is :%s", unordered.c_str());
    }
    return hasCycle;
}

std::set<std::string> DependGraph::GetNoDependVertices()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    Walk walk = FindReleased(vertexStatus_, outVertices_, false);
    if (!walk.missing.empty()) {
        startplan::MakeRoom(vertexStatus_, walk.missing.size());
        walk = FindReleased(vertexStatus_, outVertices_, true);
    }
    std::set<std::string> result = walk.released;
    std::set<std::string> out = walk.released;

    // Nothing from here on can fail: a vertex is never marked as handed out that no caller gets.
    noDependVertices_.swap(walk.released);
    outVertices_.merge(out);
    for (VertexStatus* status : walk.statuses) {
        status->state = VertexState::READY;
    }
    return result;
}

bool DependGraph::Pop(const std::string& name)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto out = outVertices_.find(name);
    if (out == outVertices_.end()) {
        syslog(LOG_WARNING, "DependGraph Pop: %s cannot found in graph", name.c_str());
        return false;
    }
    syslog(LOG_INFO, "DependGraph Pop: %s", name.c_str());
    vertexStatus_[name].state = VertexState::POPPED;
    outVertices_.erase(out);
    ++popNum_;
    return true;
}

bool DependGraph::IsEmpty()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return popNum_ == vertexNum_;
}

void DependGraph::Clear()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    StartOver(0);
}

void DependGraph::StartOver(std::size_t vertices)
{
    vertexNum_ = static_cast<std::uint32_t>(vertices);
    popNum_ = 0;
    noDependVertices_.clear();
    outVertices_.clear();
    vertexStatus_.clear();
}
