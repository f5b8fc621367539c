// Does the graph of a request cost what the request and the table cost, not their product?
//
// Measured: GetStartGraph() and GetTermGraph() for a request of all names of tables of 100, 1,000 and 10,000
// keys with 10 dependencies each, which logs nothing; and for requests of 1 to 100 names over 10,000 keys,
// which log a line for each dependency or dependant outside the request.
//
// A bad number: more than about 40 ms for all of 10,000 names, or hundredfold time for tenfold names: then the
// table is walked for each name. The look-up index is built for requests of 32 names and more; 32 names that
// cost clearly more or clearly less than 31 mean that this number is wrong.

#include <cstddef>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/generate_tree.h"
#include "bench/settle_heap.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"

namespace {

constexpr std::size_t kEdgesEach = 10;
constexpr std::size_t kKeysForSmallRequests = 10000;

ParseAndDepend Configured(std::size_t applications)
{
    const generate::Table table = generate::RandomTable(applications, kEdgesEach);
    ParseAndDepend configuration;
    configuration.SetApplicationDependsMap({table.begin(), table.end()});
    return configuration;
}

// `count` names, evenly spread over those of the table.
std::vector<std::string> Request(std::size_t count, std::size_t applications)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i) {
        names.push_back(generate::ApplicationName(i * applications / count));
    }
    return names;
}

using Builder = std::uint32_t (ParseAndDepend::*)(const std::vector<std::string>&, DependGraph&) const;

void Build(benchmark::State& state, Builder builder, std::size_t requests, std::size_t applications)
{
    const ParseAndDepend configuration = Configured(applications);
    const std::vector<std::string> names = Request(requests, applications);
    for (auto _ : state) {
        DependGraph graph;
        if ((configuration.*builder)(names, graph) != 0) {
            state.SkipWithError("the graph was not built");
        }
        state.PauseTiming();
        graph.Clear();
        bench::SettleHeap();
        state.ResumeTiming();
    }
}

void All(benchmark::State& state, Builder builder)
{
    const auto applications = static_cast<std::size_t>(state.range(0));
    Build(state, builder, applications, applications);
}

void Some(benchmark::State& state, Builder builder)
{
    Build(state, builder, static_cast<std::size_t>(state.range(0)), kKeysForSmallRequests);
}

void SmallRequests(benchmark::internal::Benchmark* row)
{
    for (const int names : {1, 10, 31, 32, 64, 100}) {
        row->Arg(names);
    }
    row->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(All, start, &ParseAndDepend::GetStartGraph)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(All, term, &ParseAndDepend::GetTermGraph)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Some, start, &ParseAndDepend::GetStartGraph)->Apply(SmallRequests);
BENCHMARK_CAPTURE(Some, term, &ParseAndDepend::GetTermGraph)->Apply(SmallRequests);

} // namespace
