#include "startplan/depend_graph.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <syslog.h>

namespace {

using VertexTable = std::unordered_map<std::string, VertexStatus>;

// Room for `more` entries, so that inserting them in a walk does not rehash the table under the loop; an
// insertion without rehash leaves the walk's iterator good. Returns whether the table was rehashed, which
// changes its order. A table that lacks no name is never touched and keeps the order of plain insertion.
bool MakeRoom(VertexTable& table, std::size_t more)
{
    if (more == 0 || table.size() + more <= table.bucket_count()) { // the load factor stops at 1
        return false;
    }
    table.reserve(table.size() + more);
    return true;
}

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

// What one walk over the table finds: the vertices to hand out, and how many dependencies are missing whose
// state it asked for.
struct Walk {
    std::set<std::string> released;
    std::vector<VertexStatus*> statuses; // of the vertices in `released`
    std::size_t missing = 0;
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
            ++walk.missing;
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

// Kahn's topological sort of a whole table, with the vertices numbered so that each dependency is looked
// up by name once.
//
// It gives what the plain method gives that walks the table once for each vertex taken from its queue, in
// every state that the vertices may be in: a vertex joins the queue each time that one of its dependencies
// is taken from it and all of them are popped, the table gains a missing name when the state of that name
// is first asked for, and the verdict compares the number of names taken with the number of vertices.
// tests/depend holds it against that plain method.
class TopologicalSort {
public:
    explicit TopologicalSort(VertexTable& table) : table_(table)
    {
        NumberVertices();
        if (MakeRoom(table_, names_.size() - vertexCount_)) {
            NumberVertices();
        }
        LinkDependants();
    }

    // Whether every vertex could be ordered.
    bool Run()
    {
        SeedQueue();
        const std::size_t most = names_.size();
        for (std::size_t head = 0; head < queue_.size(); ++head) {
            const Id taken = queue_[head];
            // With more names than vertices the verdict stands. Popped vertices from before the call can
            // join the queue along every path that leads to them, so from here on each counts once.
            if (isSorted_[taken] && queue_.size() > most) {
                continue;
            }
            isPopped_[taken] = true;
            isSorted_[taken] = true;
            for (std::size_t i = firstDependant_[taken]; i < firstDependant_[taken + 1]; ++i) {
                if (IsFree(dependants_[i])) {
                    queue_.push_back(dependants_[i]);
                }
            }
        }
        return queue_.size() == table_.size();
    }

    // The vertices that could not be ordered, in the table's order, each followed by a blank.
    std::string Unordered() const
    {
        std::string names;
        Id next = 0;
        for (const auto& entry : table_) {
            if (!isSorted_[IdOf(entry.first, next)]) {
                names.append(entry.first).append(" ");
            }
        }
        return names;
    }

private:
    // A vertex: its place in the table's order, counted before any name was added; then the missing names.
    using Id = std::uint32_t;

    void NumberVertices()
    {
        names_.clear();
        depends_.clear();
        firstDepend_.assign(1, 0);
        isPopped_.clear();
        ids_.clear();
        ids_.reserve(table_.size());
        for (const auto& [name, status] : table_) {
            AddName(name);
            isPopped_.push_back(status.state == VertexState::POPPED);
        }
        vertexCount_ = names_.size();
        for (const auto& entry : table_) {
            for (const std::string& name : entry.second.depends) {
                depends_.push_back(AddName(name));
            }
            firstDepend_.push_back(depends_.size());
        }
        isPopped_.resize(names_.size(), false);
        isSorted_.assign(names_.size(), false);
        isInTable_.assign(names_.size() - vertexCount_, false);
        cursors_.assign(firstDepend_.begin(), firstDepend_.end() - 1);
    }

    Id AddName(const std::string& name)
    {
        const auto [entry, isNew] = ids_.try_emplace(name, static_cast<Id>(names_.size()));
        if (isNew) {
            names_.push_back(&name);
        }
        return entry->second;
    }

    // For each name the vertices that depend on it, in the table's order.
    void LinkDependants()
    {
        firstDependant_.assign(names_.size() + 1, 0);
        for (const Id name : depends_) {
            ++firstDependant_[name + 1];
        }
        for (std::size_t name = 0; name < names_.size(); ++name) {
            firstDependant_[name + 1] += firstDependant_[name];
        }
        dependants_.resize(depends_.size());
        std::vector<std::size_t> ends(firstDependant_.begin(), firstDependant_.end() - 1);
        for (Id vertex = 0; vertex < vertexCount_; ++vertex) {
            for (std::size_t i = firstDepend_[vertex]; i < firstDepend_[vertex + 1]; ++i) {
                dependants_[ends[depends_[i]]++] = vertex;
            }
        }
    }

    void SeedQueue()
    {
        queue_.reserve(names_.size());
        Id next = 0;
        for (const auto& entry : table_) { // gains missing names as it runs
            const Id id = IdOf(entry.first, next);
            if (IsFree(id)) {
                queue_.push_back(id);
            }
        }
    }

    // The vertex met next in a walk over the table. `next` counts the vertices that were in it from the
    // start; names that were added stand between them.
    Id IdOf(const std::string& name, Id& next) const
    {
        if (next < vertexCount_ && names_[next] == &name) {
            return next++;
        }
        return ids_.at(name);
    }

    // Whether all dependencies are popped. Vertices only ever become popped in a sort, so the search goes
    // on where it stopped the last time.
    bool IsFree(Id id)
    {
        if (id >= vertexCount_) {
            return true; // a name that was added depends on nothing
        }
        std::size_t& cursor = cursors_[id];
        while (cursor < firstDepend_[id + 1] && isPopped_[depends_[cursor]]) {
            ++cursor;
        }
        if (cursor == firstDepend_[id + 1]) {
            return true;
        }
        const Id unfinished = depends_[cursor];
        if (unfinished >= vertexCount_ && !isInTable_[unfinished - vertexCount_]) {
            table_.try_emplace(*names_[unfinished]);
            isInTable_[unfinished - vertexCount_] = true;
        }
        return false;
    }

    VertexTable& table_;
    std::size_t vertexCount_ = 0;           // without the missing names
    std::vector<const std::string*> names_; // by id
    std::unordered_map<std::string_view, Id> ids_;
    std::vector<Id> depends_;              // of vertex 0, then of vertex 1, ...
    std::vector<std::size_t> firstDepend_; // where in depends_ each vertex begins
    std::vector<Id> dependants_;           // likewise for the other direction
    std::vector<std::size_t> firstDependant_;
    std::vector<std::size_t> cursors_; // where in depends_ the first unfinished dependency was seen
    std::vector<bool> isPopped_;
    std::vector<bool> isSorted_;
    std::vector<bool> isInTable_; // of the missing names: was it added
    std::vector<Id> queue_;       // all that ever joined it, in that order
};

} // namespace

void DependGraph::Update(const std::map<std::string, std::set<std::string>>& depends)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    vertexNum_ = static_cast<std::uint32_t>(depends.size());
    popNum_ = 0;
    noDependVertices_.clear();
    outVertices_.clear();
    vertexStatus_.clear();
    for (const auto& [name, names] : depends) {
        vertexStatus_.emplace(name, VertexStatus{VertexState::WAITING, names});
    }
}

bool DependGraph::HasCycle()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    TopologicalSort sort(vertexStatus_);
    const bool hasCycle = !sort.Run();
    const std::string unordered = hasCycle ? sort.Unordered() : std::string();
    for (auto& entry : vertexStatus_) {
        entry.second.state = VertexState::WAITING;
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
    if (walk.missing > 0) {
        MakeRoom(vertexStatus_, walk.missing);
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
    vertexNum_ = 0;
    popNum_ = 0;
    noDependVertices_.clear();
    outVertices_.clear();
    vertexStatus_.clear();
}
