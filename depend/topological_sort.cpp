#include "depend/topological_sort.h"

#include <algorithm>
#include <limits>

namespace startplan {

namespace {

constexpr NameNumbers::Id kNobody = std::numeric_limits<NameNumbers::Id>::max();

} // namespace

bool MakeRoom(VertexTable& table, std::size_t more)
{
    if (more == 0 || table.size() + more <= table.bucket_count()) { // the load factor stops at 1
        return false;
    }
    table.reserve(table.size() + more);
    return true;
}

TopologicalSort::TopologicalSort(VertexTable& table) : table_(table)
{
    NumberVertices();
    if (MakeRoom(table_, names_.size() - vertexCount_)) {
        NumberVertices();
    }
    LinkDependants();
    mayRepeat_ = std::find(isPopped_.begin(), isPopped_.end(), true) != isPopped_.end();
    if (mayRepeat_) {
        isQueued_.assign(vertexCount_, false);
        freeDependants_.resize(names_.size());
    }
}

bool TopologicalSort::Run()
{
    SeedQueue();
    const std::size_t most = names_.size();
    for (std::size_t head = 0; head < queue_.size(); ++head) {
        const Id taken = queue_[head];
        if (isTaken_[taken]) {
            // What it frees was freed before, and joins the queue again. A vertex that was popped before
            // the sort can come back along every path that leads to it, so once the queue has more names
            // than there are vertices, and the verdict stands, each of them counts once.
            if (queue_.size() <= most) {
                const std::vector<Id>& again = freeDependants_[taken];
                queue_.insert(queue_.end(), again.begin(), again.end());
            }
            continue;
        }
        isPopped_[taken] = true;
        isTaken_[taken] = true;
        for (std::size_t i = firstDependant_[taken]; i < firstDependant_[taken + 1]; ++i) {
            if (IsFree(dependants_[i])) {
                Enqueue(dependants_[i]);
            }
        }
    }
    return queue_.size() == table_.size();
}

std::string TopologicalSort::Unordered() const
{
    std::string names;
    Id next = 0;
    for (const auto& entry : table_) {
        if (!isTaken_[IdOf(entry.first, next)]) {
            names.append(entry.first).append(" ");
        }
    }
    return names;
}

void TopologicalSort::NumberVertices()
{
    names_.clear();
    numbers_.Reset(table_.size());
    isPopped_.clear();
    for (const auto& [name, status] : table_) {
        AddName(name);
        isPopped_.push_back(status.state == VertexState::POPPED);
    }
    vertexCount_ = names_.size();

    depends_.clear();
    firstDepend_.assign(1, 0);
    for (const auto& entry : table_) {
        for (const std::string& name : entry.second.depends) {
            depends_.push_back(AddName(name));
        }
        firstDepend_.push_back(depends_.size());
    }
    cursors_.assign(firstDepend_.begin(), firstDepend_.end() - 1);
    waitsFor_.assign(vertexCount_, kNobody);
    isPopped_.resize(names_.size(), false);
    isTaken_.assign(names_.size(), false);
    isInTable_.assign(names_.size() - vertexCount_, false);
}

TopologicalSort::Id TopologicalSort::AddName(const std::string& name)
{
    const Id id = numbers_.Add(name);
    if (id == names_.size()) {
        names_.push_back(&name);
    }
    return id;
}

// For each name the vertices that depend on it, in the table's order.
void TopologicalSort::LinkDependants()
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

void TopologicalSort::SeedQueue()
{
    queue_.reserve(names_.size());
    Id next = 0;
    for (const auto& entry : table_) { // gains missing names as it runs
        const Id id = IdOf(entry.first, next);
        if (IsFree(id)) {
            Enqueue(id);
        }
    }
}

void TopologicalSort::Enqueue(Id id)
{
    queue_.push_back(id);
    if (!mayRepeat_ || id >= vertexCount_ || isQueued_[id]) {
        return;
    }
    isQueued_[id] = true;
    for (std::size_t i = firstDepend_[id]; i < firstDepend_[id + 1]; ++i) {
        freeDependants_[depends_[i]].push_back(id);
    }
}

// Whether all dependencies are popped. Vertices only ever become popped in a sort, so the search goes on
// where it stopped the last time.
bool TopologicalSort::IsFree(Id id)
{
    if (id >= vertexCount_) {
        return true; // a name that was added depends on nothing
    }
    const Id waitsFor = waitsFor_[id];
    if (waitsFor != kNobody && !isPopped_[waitsFor]) {
        return false; // decides most calls by one look at a small array
    }
    std::size_t& cursor = cursors_[id];
    while (cursor < firstDepend_[id + 1] && isPopped_[depends_[cursor]]) {
        ++cursor;
    }
    if (cursor == firstDepend_[id + 1]) {
        return true;
    }
    const Id unfinished = depends_[cursor];
    waitsFor_[id] = unfinished;
    if (unfinished >= vertexCount_ && !isInTable_[unfinished - vertexCount_]) {
        table_.try_emplace(*names_[unfinished]);
        isInTable_[unfinished - vertexCount_] = true;
    }
    return false;
}

// The vertex met next in a walk over the table. `next` counts the vertices that were in it from the start;
// names that were added stand between them.
TopologicalSort::Id TopologicalSort::IdOf(const std::string& name, Id& next) const
{
    if (next < vertexCount_ && names_[next] == &name) {
        return next++;
    }
    return numbers_.Of(name);
}

} // namespace startplan
