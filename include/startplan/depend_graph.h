#ifndef STARTPLAN_DEPEND_GRAPH_H
#define STARTPLAN_DEPEND_GRAPH_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <unordered_map>

class ParseAndDepend;

/// @file
/// The graph that hands out applications in dependency order.

/// How far a vertex of a DependGraph has come. The numbers are part of the interface.
enum class VertexState : std::uint32_t {
    WAITING = 0, ///< not handed out yet; also what HasCycle() leaves on every vertex
    READY = 1,   ///< handed out by GetNoDependVertices() and not popped yet
    POPPED = 2,  ///< popped: a finished dependency
};

/// What a DependGraph keeps for each vertex.
struct VertexStatus {
    VertexState state = VertexState::WAITING; ///< how far it has come
    std::set<std::string> depends;            ///< the names this vertex waits for; ascending byte order
};

/// The applications of one start or stop request, handed out in dependency order.
///
///     DependGraph graph;
///     graph.Update({{"net", {}}, {"web", {"net"}}});
///     if (graph.HasCycle()) { return; }   // the log names the vertices
///     graph.GetNoDependVertices();        // {"net"}; a second call here gives {}
///     graph.Pop("net");                   // "net" has been started
///     graph.GetNoDependVertices();        // {"web"}
///     graph.Pop("web");
///     graph.IsEmpty();                    // true
///
/// Call order: Update(), HasCycle(), then GetNoDependVertices() and Pop() in turn until IsEmpty().
/// Clear() and a new Update() start over.
///
/// Owned by the caller; names are copied in and out. Never copied or moved. Every operation holds the
/// graph's mutex from start to end, so threads may share one graph. No operation blocks on anything
/// but that mutex.
///
/// Every operation may throw std::system_error (the mutex cannot be locked) and, where it says so,
/// std::bad_alloc; the mutex is free again after either.
///
/// A dependency that was no key of Update() is tolerated: the first time that its state is asked for,
/// by GetNoDependVertices() or HasCycle(), it joins the table as a waiting vertex without
/// dependencies. It is then handed out like any other, and the vertices that wait for it are released
/// once it has been popped. IsEmpty() does not wait for it, since only the keys of Update() are
/// counted; and whether HasCycle() takes such a graph for a cycle depends on where in the hash table
/// the name falls.
class DependGraph {
public:
    /// Replaces the whole graph: every key becomes a waiting vertex that depends on the names in its
    /// set.
    ///     a name in a set that is no key     kept as a dependency, see the class
    ///     a vertex in its own set            never handed out; HasCycle() names it
    ///     an empty map                       an empty graph; IsEmpty() is true
    /// At most 4,294,967,295 keys are counted. Throws std::bad_alloc, after which the graph is empty. Logs
    /// nothing.
    void Update(const std::map<std::string, std::set<std::string>>& depends);

    /// Whether some vertex can never be handed out because it is on a cycle or depends on one.
    ///
    /// Takes time in proportion to vertices plus dependencies. An empty graph has no cycle.
    /// @pre     Called right after Update(). It puts every vertex back to VertexState::WAITING: after a
    ///          Pop() the popped names would be handed out again, while the pops already counted stay
    ///          counted. Nor is the verdict of use there: it compares how often vertices became free with
    ///          their number, and a popped vertex can become free several times or stand in for one that
    ///          never does. The line may then name no vertex at all.
    /// @return  true, with one line logged: LOG_ERR "The Graph has cycle. the cycle is :%s", where "%s"
    ///          is every vertex that could not be ordered (those on a cycle and all that depend on
    ///          them), each followed by a blank, in the hash table's order; or false, with nothing
    ///          logged.
    /// Throws std::bad_alloc, after which every vertex is in the state it had before.
    bool HasCycle();

    /// Hands out the vertices whose dependencies have all been popped, each of them once.
    ///
    /// A vertex handed out stays out until Pop() and does not come back after it. A second call
    /// without a Pop() in between gives an empty set. Each call walks all vertices: report several pops
    /// before the next call where they come together.
    /// @return  the names in ascending byte order: a copy, good while other threads pop.
    /// Throws std::bad_alloc. Logs nothing.
    std::set<std::string> GetNoDependVertices();

    /// Reports that a vertex handed out has been started or stopped: it now counts as a finished
    /// dependency.
    ///     handed out and not popped yet                  true,  LOG_INFO "DependGraph Pop: %s"
    ///     not handed out, popped before, not a vertex    false, LOG_WARNING
    ///                                                    "DependGraph Pop: %s cannot found in graph"
    /// A false result changes nothing.
    bool Pop(const std::string& name);

    /// Whether as many pops have succeeded as the last Update() had keys. True for a new graph and
    /// after Clear(). Logs nothing.
    bool IsEmpty();

    /// Makes the graph as new: no vertices, nothing handed out, no pops counted. Logs nothing.
    void Clear();

private:
    friend class ParseAndDepend;

    // Update() for the builders, which need their map no longer: its names are moved, not copied.
    [[gnu::visibility("hidden")]] void TakeOver(std::map<std::string, std::set<std::string>>&& depends);
    // For both, under the mutex.
    [[gnu::visibility("hidden")]] void StartOver(std::size_t vertices);

    std::mutex mutex_; ///< guards every member below
    std::uint32_t vertexNum_ = 0;
    std::uint32_t popNum_ = 0;
    std::set<std::string> noDependVertices_; ///< what the last GetNoDependVertices() handed out
    std::set<std::string> outVertices_;      ///< handed out and not popped yet
    std::unordered_map<std::string, VertexStatus> vertexStatus_;
};

#endif
