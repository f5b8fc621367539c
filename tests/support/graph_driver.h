#ifndef STARTPLAN_TESTS_SUPPORT_GRAPH_DRIVER_H
#define STARTPLAN_TESTS_SUPPORT_GRAPH_DRIVER_H

#include <cstddef>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "tests/support/plain_depend_graph.h"
#include "tests/support/random_seed.h"

namespace test_support {

// What a graph gave on its way to the end, the same for DependGraph and PlainDependGraph.
struct Transcript {
    std::vector<std::set<std::string>> rounds; // of hand-outs
    std::vector<bool> isEmpty;                 // at first, and after each round
    std::set<std::string> handedOut;           // all rounds together
};

inline bool operator==(const Transcript& a, const Transcript& b)
{
    return a.rounds == b.rounds && a.isEmpty == b.isEmpty;
}

inline std::ostream& operator<<(std::ostream& out, const Transcript& transcript)
{
    for (std::size_t i = 0; i < transcript.rounds.size(); ++i) {
        out << (transcript.isEmpty[i] ? "(empty) " : "") << "{ ";
        for (const std::string& name : transcript.rounds[i]) {
            out << name << " ";
        }
        out << "} ";
    }
    return out << (transcript.isEmpty.back() ? "(empty)" : "");
}

// Hands out and pops until nothing more comes. One call without a name is not yet the end: it may have
// added a missing name, which only the next one hands out.
template <class Graph>
Transcript HandOutAll(Graph& graph)
{
    Transcript transcript;
    transcript.isEmpty.push_back(graph.IsEmpty());
    for (int withoutName = 0; withoutName < 2;) {
        const std::set<std::string> names = graph.GetNoDependVertices();
        withoutName = names.empty() ? withoutName + 1 : 0;
        for (const std::string& name : names) {
            graph.Pop(name);
        }
        transcript.rounds.push_back(names);
        transcript.isEmpty.push_back(graph.IsEmpty());
        transcript.handedOut.insert(names.begin(), names.end());
    }
    return transcript;
}

// "a: b c; b:;"
inline std::string Show(const GraphInput& input)
{
    std::string text;
    for (const auto& [name, depends] : input) {
        text += name + ":";
        for (const std::string& dependency : depends) {
            text += " " + dependency;
        }
        text += "; ";
    }
    return text;
}

// Vertices v0, v1, ...; each depends on some that stand before it and, where `withCycles`, on any; and, one
// in `missingOneIn` (0 for never), on a name that is no vertex.
inline GraphInput RandomGraph(Random& random, std::size_t vertices, std::size_t mostDepends, bool withCycles,
                              std::size_t missingOneIn)
{
    GraphInput input;
    for (std::size_t i = 0; i < vertices; ++i) {
        std::set<std::string>& depends = input["v" + std::to_string(i)];
        const std::size_t candidates = withCycles ? vertices : i;
        for (std::size_t count = random.Below(mostDepends + 1); count > 0 && candidates > 0; --count) {
            depends.insert("v" + std::to_string(random.Below(candidates)));
        }
        if (missingOneIn > 0 && random.OneIn(missingOneIn)) {
            // Some before all vertices in byte order, some behind them.
            depends.insert((random.OneIn(2) ? "m" : "x") + std::to_string(random.Below(vertices)));
        }
    }
    return input;
}

} // namespace test_support

#endif
