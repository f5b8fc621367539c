#include "depend/topological_sort.h"

#include <algorithm>
#include <cstdint>

namespace startplan {

namespace {

constexpr NameNumbers::Id kNobody = NameNumbers::kUnknown;

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
    NumberDependencies();
    if (MakeRoom(table_, missing_.size())) {
        NumberVertices();
        NumberDependencies();
    }
    LinkDependants();
    isTaken_.assign(NameCount(), false);
    queue_.reserve(NameCount());
}

bool TopologicalSort::Run()
{
    // Then each vertex joins the queue once, and the table stays as it is.
    if (areAllWaiting_ && missing_.empty()) {
        OrderByCounting();
    } else {
        OrderByStates();
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
    vertices_.clear();
    numbers_.Reset(table_.size());
    areAllWaiting_ = true;
    for (const auto& entry : table_) {
        vertices_.push_back(&entry);
        numbers_.Add(entry.first);
        areAllWaiting_ = areAllWaiting_ && entry.second.state == VertexState::WAITING;
    }
}

void TopologicalSort::NumberDependencies()
{
    missing_.clear();
    depends_.clear();
    firstDepend_.assign(1, 0);
    std::vector<NameNumbers::Announced> announced;
    for (const VertexTable::value_type* vertex : vertices_) {
        numbers_.Announce(vertex->second.depends, announced);
        for (const NameNumbers::Announced& name : announced) {
            const Id id = numbers_.Add(name);
            if (id == NameCount()) {
                missing_.push_back(name.name);
            }
            depends_.push_back(id);
        }
        firstDepend_.push_back(depends_.size());
    }
}

// For each name the vertices that depend on it, in the table's order.
void TopologicalSort::LinkDependants()
{
    firstDependant_.assign(NameCount() + 1, 0);
    for (const Id name : depends_) {
        ++firstDependant_[name + 1];
    }
    for (std::size_t name = 0; name < NameCount(); ++name) {
        firstDependant_[name + 1] += firstDependant_[name];
    }
    dependants_.resize(depends_.size());
    std::vector<std::size_t> ends(firstDependant_.begin(), firstDependant_.end() - 1);
    for (Id vertex = 0; vertex < vertices_.size(); ++vertex) {
        for (std::size_t i = firstDepend_[vertex]; i < firstDepend_[vertex + 1]; ++i) {
            dependants_[ends[depends_[i]]++] = vertex;
        }
    }
}

void TopologicalSort::OrderByCounting()
{
    std::vector<std::uint32_t> unfinished(vertices_.size());
    for (Id id = 0; id < vertices_.size(); ++id) {
        unfinished[id] = static_cast<std::uint32_t>(firstDepend_[id + 1] - firstDepend_[id]);
        if (unfinished[id] == 0) {
            queue_.push_back(id);
        }
    }
    for (std::size_t head = 0; head < queue_.size(); ++head) {
        const Id taken = queue_[head];
        isTaken_[taken] = true;
        for (std::size_t i = firstDependant_[taken]; i < firstDependant_[taken + 1]; ++i) {
            if (--unfinished[dependants_[i]] == 0) {
                queue_.push_back(dependants_[i]);
            }
        }
    }
}

void TopologicalSort::OrderByStates()
{
    cursors_.assign(firstDepend_.begin(), firstDepend_.end() - 1);
    waitsFor_.assign(vertices_.size(), kNobody);
    isInTable_.assign(missing_.size(), false);
    isPopped_.assign(NameCount(), false);
    for (Id id = 0; id < vertices_.size(); ++id) {
        isPopped_[id] = vertices_[id]->second.state == VertexState::POPPED;
    }
    mayRepeat_ = std::find(isPopped_.begin(), isPopped_.end(), true) != isPopped_.end();
    if (mayRepeat_) {
        isQueued_.assign(vertices_.size(), false);
        freeDependants_.resize(NameCount());
    }
    SeedQueue();
    for (std::size_t head = 0; head < queue_.size(); ++head) {
        const Id taken = queue_[head];
        if (isTaken_[taken]) {
            // What it frees was freed before, and joins the queue again. A vertex that was popped before
            // the sort can come back along every path that leads to it, so once the queue has more names
            // than there are vertices, and the verdict stands, each of them counts once.
            if (queue_.size() <= NameCount()) {
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
}

void TopologicalSort::SeedQueue()
{
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
    if (!mayRepeat_ || id >= vertices_.size() || isQueued_[id]) {
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
    if (id >= vertices_.size()) {
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
    if (unfinished >= vertices_.size() && !isInTable_[unfinished - vertices_.size()]) {
        table_.try_emplace(*missing_[unfinished - vertices_.size()]);
        isInTable_[unfinished - vertices_.size()] = true;
    }
    return false;
}

// The vertex met next in a walk over the table. `next` counts the vertices that were in it from the start;
// names that were added stand between them.
TopologicalSort::Id TopologicalSort::IdOf(const std::string& name, Id& next) const
{
    if (next < vertices_.size() && &vertices_[next]->first == &name) {
        return next++;
    }
    return numbers_.Of(name);
}

} // namespace startplan
