// Does a graph cost what its vertices and edges cost?
//
// Measured: Update(), HasCycle() and the whole hand-out loop, at 1,000, 10,000 and 100,000 vertices of 10
// dependencies each; the same for a chain and for a wide graph (one vertex in front of all others, one behind
// them), for names that are missing and for a graph with a cycle, whose message is part of the time.
//
// A bad number: tenfold vertices must cost about tenfold time for Update() and HasCycle() - up to twenty-fold
// where the graph outgrows the processor's caches -, and 100,000 vertices with 1,000,000 edges about 0.15 s;
// a hundredfold means that the table is walked for each vertex. The hand-out loop walks the table once a
// round by design, so its cost is vertices times rounds: a chain, of as many rounds as vertices, is measured
// up to 3,000 and costs ninefold for threefold.

#include <cstddef>
#include <set>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/generate_tree.h"
#include "bench/settle_heap.h"
#include "startplan/depend_graph.h"

namespace {

constexpr std::size_t kEdgesEach = 10;

using MakeTable = generate::Table (*)(std::size_t vertices);

generate::Table Mixed(std::size_t vertices)
{
    return generate::RandomTable(vertices, kEdgesEach);
}
generate::Table Missing(std::size_t vertices)
{
    return generate::TableWithMissingNames(vertices, kEdgesEach);
}
generate::Table Cyclic(std::size_t vertices)
{
    return generate::TableWithCycle(vertices, kEdgesEach);
}

generate::Table TableOf(const benchmark::State& state, MakeTable make)
{
    return make(static_cast<std::size_t>(state.range(0)));
}

void CountEdges(benchmark::State& state, const generate::Table& table)
{
    std::size_t edges = 0;
    for (const auto& entry : table) {
        edges += entry.second.size();
    }
    state.counters["edges"] = static_cast<double>(edges);
}

void Update(benchmark::State& state, MakeTable make)
{
    const generate::Table table = TableOf(state, make);
    DependGraph graph;
    for (auto _ : state) {
        graph.Update(table);
        state.PauseTiming();
        graph.Clear();
        bench::SettleHeap();
        state.ResumeTiming();
    }
    CountEdges(state, table);
}

void HasCycle(benchmark::State& state, MakeTable make)
{
    const generate::Table table = TableOf(state, make);
    DependGraph graph;
    graph.Update(table);
    for (auto _ : state) {
        benchmark::DoNotOptimize(graph.HasCycle());
    }
    CountEdges(state, table);
}

// The first check of a graph with missing names adds them to it, so each round has a fresh one.
void FirstHasCycle(benchmark::State& state, MakeTable make)
{
    const generate::Table table = TableOf(state, make);
    DependGraph graph;
    for (auto _ : state) {
        state.PauseTiming();
        graph.Update(table);
        bench::SettleHeap();
        state.ResumeTiming();
        benchmark::DoNotOptimize(graph.HasCycle());
    }
    CountEdges(state, table);
}

void HandOut(benchmark::State& state, MakeTable make)
{
    const generate::Table table = TableOf(state, make);
    DependGraph graph;
    std::size_t rounds = 0;
    for (auto _ : state) {
        state.PauseTiming();
        graph.Update(table);
        rounds = 0;
        state.ResumeTiming();
        while (!graph.IsEmpty()) {
            ++rounds;
            const std::set<std::string> ready = graph.GetNoDependVertices();
            if (ready.empty()) {
                throw std::runtime_error("the loop does not end");
            }
            for (const std::string& name : ready) {
                graph.Pop(name);
            }
        }
    }
    state.counters["rounds"] = static_cast<double>(rounds);
}

void Sizes(benchmark::internal::Benchmark* row)
{
    row->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
}

void ChainSizes(benchmark::internal::Benchmark* row)
{
    row->Arg(1000)->Arg(3000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(Update, mixed, Mixed)->Apply(Sizes);
BENCHMARK_CAPTURE(Update, chain, generate::Chain)->Apply(Sizes);
BENCHMARK_CAPTURE(Update, wide, generate::Wide)->Apply(Sizes);
BENCHMARK_CAPTURE(HasCycle, mixed, Mixed)->Apply(Sizes);
BENCHMARK_CAPTURE(HasCycle, chain, generate::Chain)->Apply(Sizes);
BENCHMARK_CAPTURE(HasCycle, wide, generate::Wide)->Apply(Sizes);
BENCHMARK_CAPTURE(HasCycle, cyclic, Cyclic)->Apply(Sizes);
BENCHMARK_CAPTURE(FirstHasCycle, missing, Missing)->Apply(Sizes);
BENCHMARK_CAPTURE(HandOut, mixed, Mixed)->Apply(Sizes);
BENCHMARK_CAPTURE(HandOut, wide, generate::Wide)->Apply(Sizes);
BENCHMARK_CAPTURE(HandOut, missing, Missing)->Apply(Sizes);
BENCHMARK_CAPTURE(HandOut, chain, generate::Chain)->Apply(ChainSizes);

} // namespace
