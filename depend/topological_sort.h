#ifndef STARTPLAN_DEPEND_TOPOLOGICAL_SORT_H
#define STARTPLAN_DEPEND_TOPOLOGICAL_SORT_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "depend/name_numbers.h"
#include "startplan/depend_graph.h"

namespace startplan {

using VertexTable = std::unordered_map<std::string, VertexStatus>;

// Room for `more` names, so that adding them in a walk does not rehash the table under the loop; an
// insertion without rehash leaves the walk's iterator good. Returns whether the table was rehashed, which
// changes its order. A table that lacks no name is never touched and keeps the order of plain insertion.
bool MakeRoom(VertexTable& table, std::size_t more);

// Kahn's topological sort of a whole table, with the vertices numbered so that each dependency is looked
// up by name once.
//
// It gives what the plain method gives that walks the table once for each vertex taken from its queue, in
// every state that the vertices may be in: a vertex joins the queue each time that one of its dependencies
// is taken from it and all of them are popped, the table gains a missing name when the state of that name
// is first asked for, and the verdict compares the number of names taken with the number of vertices.
// tests/depend holds it against that plain method.
//
// The states in the table are read and left alone.
class TopologicalSort {
public:
    explicit TopologicalSort(VertexTable& table);

    // Whether every vertex could be ordered. To be called once.
    bool Run();

    // Whether all vertices were waiting before the sort; so are the names that it adds.
    bool AreAllWaiting() const { return areAllWaiting_; }

    // The vertices that could not be ordered, in the table's order, each followed by a blank.
    std::string Unordered() const;

private:
    // A vertex: its place in the table's order, counted before any name was added; then the missing names.
    using Id = NameNumbers::Id;

    void NumberVertices();
    void NumberDependencies();
    void LinkDependants();
    std::size_t NameCount() const { return vertices_.size() + missing_.size(); }

    void OrderByCounting();

    void OrderByStates();
    void SeedQueue();
    void Enqueue(Id id);
    bool IsFree(Id id);
    Id IdOf(const std::string& name, Id& next) const;

    VertexTable& table_;
    std::vector<const VertexTable::value_type*> vertices_; // by id
    std::vector<const std::string*> missing_;              // by id, the number of vertices subtracted
    NameNumbers numbers_;
    std::vector<Id> depends_;              // of vertex 0, then of vertex 1, ...
    std::vector<std::size_t> firstDepend_; // where in depends_ each vertex begins
    std::vector<Id> dependants_;           // likewise for the other direction
    std::vector<std::size_t> firstDependant_;
    bool areAllWaiting_ = true;
    std::vector<bool> isTaken_;
    std::vector<Id> queue_; // all that ever joined it, in that order

    // For OrderByStates() alone.
    std::vector<bool> isPopped_;
    std::vector<std::size_t> cursors_; // where in depends_ the first unfinished dependency was seen
    std::vector<Id> waitsFor_;         // the dependency there
    std::vector<bool> isInTable_;      // of the missing names: was it added
    // Only where vertices were popped before, since no other can join the queue twice.
    bool mayRepeat_ = false;
    std::vector<bool> isQueued_;
    std::vector<std::vector<Id>> freeDependants_; // of each name, those that have been in the queue
};

} // namespace startplan

#endif
