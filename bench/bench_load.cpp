// How far is loading a configuration from what it cannot do without, and does it grow with the input?
//
// Measured: ParseYaml() of trees of 100, 1,000 and 10,000 applications with 10 dependencies each, in 2, 20
// and 200 startup files below 2, 20 and 199 walked files; beside it, in turns within the same row, its
// limit: libyaml's own loading of the same files, the same log lines formatted once more, and the same
// account look-ups. All in processor time, the least of all rounds, per entry.
//
// A bad number: times_limit above 1.4, or us_per_entry that rises by more than a third from row to row: then
// something is read twice, copied needlessly or looked for by walking. With every dependency missing the
// library has 10 more lines to log for each entry, and so has the limit; times_limit must not rise.
// load_and_start_graph at 10,000 applications, which a device pays at boot, must stay below 0.3 s.

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <grp.h>
#include <pwd.h>
#include <time.h>
#include <yaml.h>

#include "bench/formatted_log.h"
#include "bench/generate_tree.h"
#include "bench/settle_heap.h"
#include "bench/tree_on_disk.h"
#include "startplan/application_manifest.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"

namespace {

double ProcessorSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// What the library has made of a tree, and what that took.
struct Load {
    ParseAndDepend configuration;
    std::vector<ApplicationManifest> apps;
    std::uint32_t result = 0;
    double seconds = 0;
};

std::unique_ptr<Load> LoadTree(const generate::Tree& tree)
{
    auto load = std::make_unique<Load>();
    bench::SettleHeap();
    const double start = ProcessorSeconds();
    load->result = load->configuration.ParseYaml(PARAM_TYPE_YAML, tree.topLevel, load->apps, {});
    load->seconds = ProcessorSeconds() - start;
    return load;
}

void LoadByLibYaml(const std::string& path)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    yaml_parser_t parser;
    yaml_document_t document;
    if (file == nullptr || yaml_parser_initialize(&parser) == 0) {
        throw std::runtime_error("cannot read " + path);
    }
    yaml_parser_set_input_file(&parser, file);
    if (yaml_parser_load(&parser, &document) == 0) {
        throw std::runtime_error("cannot load " + path);
    }
    yaml_document_delete(&document);
    yaml_parser_delete(&parser);
    std::fclose(file);
}

double LibYamlSeconds(const generate::Tree& tree)
{
    const double start = ProcessorSeconds();
    for (const std::string& path : tree.walkedFiles) {
        LoadByLibYaml(path);
    }
    for (const std::string& path : tree.startupFiles) {
        LoadByLibYaml(path);
    }
    return ProcessorSeconds() - start;
}

double LogSeconds(const bench::Recording& lines)
{
    const double start = ProcessorSeconds();
    lines.Replay();
    return ProcessorSeconds() - start;
}

double AccountSeconds(const generate::Tree& tree)
{
    const double start = ProcessorSeconds();
    for (std::size_t i = 0; i < tree.userNames.size(); ++i) {
        benchmark::DoNotOptimize(getpwnam(tree.userNames[i].c_str()));
        benchmark::DoNotOptimize(getgrnam(tree.groupNames[i].c_str()));
    }
    return ProcessorSeconds() - start;
}

// The least of what it is given.
class Least {
public:
    void Add(double value) { least_ = std::min(least_, value); }
    double Get() const { return least_; }

private:
    double least_ = std::numeric_limits<double>::max();
};

void LoadBesideItsLimit(benchmark::State& state, bool allMissing)
{
    const auto applications = static_cast<std::size_t>(state.range(0));
    const bench::TreeOnDisk onDisk(applications, allMissing);
    const generate::Tree& tree = onDisk.Get();
    bench::Recording lines;
    if (LoadTree(tree)->result != (allMissing ? PARSE_ERR_DEPEND_NOT_FOUND : 0)) {
        throw std::runtime_error("the generated tree does not load as it should");
    }
    lines.Close();

    Least library;
    Least libYaml;
    Least logging;
    Least accounts;
    for (auto _ : state) {
        const double seconds = LoadTree(tree)->seconds;
        state.SetIterationTime(seconds);
        library.Add(seconds);
        libYaml.Add(LibYamlSeconds(tree));
        logging.Add(LogSeconds(lines));
        accounts.Add(AccountSeconds(tree));
    }
    const double limit = libYaml.Get() + logging.Get() + accounts.Get();
    const double perEntry = 1e6 / static_cast<double>(applications);
    state.counters["us_per_entry"] = library.Get() * perEntry;
    state.counters["limit_us"] = limit * perEntry;
    state.counters["libyaml_us"] = libYaml.Get() * perEntry;
    state.counters["lines_us"] = logging.Get() * perEntry;
    state.counters["accounts_us"] = accounts.Get() * perEntry;
    state.counters["lines"] = static_cast<double>(lines.Lines());
    state.counters["times_limit"] = library.Get() / limit;
}

void LoadAndStartGraph(benchmark::State& state)
{
    const bench::TreeOnDisk onDisk(static_cast<std::size_t>(state.range(0)), false);
    const generate::Tree& tree = onDisk.Get();
    Least whole;
    for (auto _ : state) {
        const std::unique_ptr<Load> load = LoadTree(tree);
        DependGraph graph;
        const double start = ProcessorSeconds();
        const std::uint32_t result = load->configuration.GetStartGraph(tree.names, graph);
        const double seconds = load->seconds + ProcessorSeconds() - start;
        if (result != 0) {
            throw std::runtime_error("the start graph is incomplete");
        }
        state.SetIterationTime(seconds);
        whole.Add(seconds);
    }
    state.counters["least_ms"] = whole.Get() * 1e3;
}

// Long enough that the least of the largest row is one of several.
void Sizes(benchmark::internal::Benchmark* row)
{
    row->RangeMultiplier(10)->Range(100, 10000)->UseManualTime()->MinTime(2)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(LoadBesideItsLimit, all_there, false)->Name("load")->Apply(Sizes);
BENCHMARK_CAPTURE(LoadBesideItsLimit, all_missing, true)->Name("load_all_missing")->Apply(Sizes);
BENCHMARK(LoadAndStartGraph)->Name("load_and_start_graph")->Apply(Sizes);

} // namespace
