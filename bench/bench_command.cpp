// What does the startplan command cost beside the library's own reading of the same files?
//
// Measured: what the commands do with a tree of 1,000 and of 10,000 applications with 10
// dependencies each, from the files to what is printed, but without the printing; beside it ParseYaml() of
// the same tree. All in processor time. times_parse is the ratio.
//
// A bad number: times_parse that more than trebles from 1,000 to 10,000, or that is above 25: then something
// walks a table for each name, or the graph is asked more often than needed. It may double: the library's
// hand-out walks all vertices once a round, and a larger tree has more rounds. DiffOfTheSame reads two trees.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>
#include <time.h>

#include "bench/generate_tree.h"
#include "bench/tree_on_disk.h"
#include "tool/check/check.h"
#include "tool/commands/configuration_diff.h"
#include "tool/commands/explanation.h"
#include "tool/configuration/configuration.h"
#include "tool/graph/graph_picture.h"
#include "tool/graph/graph_reduction.h"
#include "tool/graph/graph_text.h"
#include "tool/plan/request_plan.h"
#include "tool/report/report_data.h"
#include "tool/report/report_page.h"
#include "tool/report/report_requests.h"
#include "tool/simulation/simulation.h"

namespace {

double ProcessorSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

const generate::Tree& TreeOf(std::size_t applications)
{
    static std::map<std::size_t, std::unique_ptr<bench::TreeOnDisk>> trees;
    std::unique_ptr<bench::TreeOnDisk>& tree = trees[applications];
    if (tree == nullptr) {
        tree = std::make_unique<bench::TreeOnDisk>(applications);
    }
    return tree->Get();
}

double ParseSeconds(const generate::Tree& tree)
{
    const tool::LogCollector unheard;
    ParseAndDepend library;
    std::vector<ApplicationManifest> apps;
    const double start = ProcessorSeconds();
    library.ParseYaml(PARAM_TYPE_YAML, tree.topLevel, apps, {});
    return ProcessorSeconds() - start;
}

tool::Configuration Load(const generate::Tree& tree)
{
    return tool::LoadConfiguration({tree.topLevel, "", {}});
}

using Work = std::function<std::size_t(const generate::Tree&)>;

// The parse in turns with the work, so that both meet the same load of the machine.
void Measure(benchmark::State& state, const Work& work)
{
    const generate::Tree& tree = TreeOf(static_cast<std::size_t>(state.range(0)));
    double least = std::numeric_limits<double>::max();
    double leastParse = least;
    for (auto _ : state) {
        leastParse = std::min(leastParse, ParseSeconds(tree));
        const double start = ProcessorSeconds();
        if (work(tree) == 0) {
            state.SkipWithError("nothing came of it");
        }
        const double seconds = ProcessorSeconds() - start;
        state.SetIterationTime(seconds);
        least = std::min(least, seconds);
    }
    state.counters["times_parse"] = least / leastParse;
}

std::size_t Simulated(const generate::Tree& tree, tool::RequestKind kind, std::uint32_t differentTimes)
{
    const tool::Configuration configuration = Load(tree);
    const std::vector<std::string> names = tool::AllNames(configuration);
    tool::SimulationSettings settings;
    settings.duration = tool::DefaultDurations(configuration, kind, names);
    if (differentTimes != 0) {
        settings.duration = [differentTimes](const std::string& name) {
            return 1 + std::hash<std::string>()(name) % differentTimes;
        };
    }
    return tool::Simulate(configuration.library, kind, names, settings).steps.size();
}

std::size_t LoadOnly(const generate::Tree& tree)
{
    return Load(tree).apps.size();
}

std::size_t PlanStart(const generate::Tree& tree)
{
    const tool::Configuration configuration = Load(tree);
    return tool::MakePlan(configuration, tool::RequestKind::START, tool::AllNames(configuration))
        .rounds.size();
}

std::size_t SimulateStart(const generate::Tree& tree)
{
    return Simulated(tree, tool::RequestKind::START, 0);
}

std::size_t SimulateStartWithTimes(const generate::Tree& tree)
{
    return Simulated(tree, tool::RequestKind::START, 1'000'000);
}

std::size_t SimulateStop(const generate::Tree& tree)
{
    return Simulated(tree, tool::RequestKind::STOP, 0);
}

std::size_t WhyOne(const generate::Tree& tree)
{
    return tool::Explain(Load(tree), tree.names[tree.names.size() / 2]).start.round;
}

std::size_t DiffOfTheSame(const generate::Tree& tree)
{
    return tool::Compare(Load(tree), Load(tree)).IsSame() ? 1 : 0;
}

std::size_t CheckAll(const generate::Tree& tree)
{
    const tool::Configuration configuration = Load(tree);
    return 1 + tool::Check(configuration, {}, tool::RuleLevels()).findings.size();
}

std::size_t GraphReduced(const generate::Tree& tree)
{
    tool::GraphPicture picture = tool::PictureOfAll(Load(tree));
    tool::Reduce(picture);
    return tool::ToDot(picture).size();
}

std::size_t ReportOfAll(const generate::Tree& tree)
{
    const tool::Configuration configuration = Load(tree);
    const tool::CheckResult result = tool::Check(configuration, {}, tool::RuleLevels());
    const tool::ReportRequests requests = tool::MakeReportRequests(configuration, "", 0);
    return tool::ReportPage("the tree", tool::ReportData(result, requests)).size();
}

#define STARTPLAN_MEASURE(work)                                                                              \
    BENCHMARK_CAPTURE(Measure, work, work)                                                                   \
        ->Arg(1000)                                                                                          \
        ->Arg(10000)                                                                                         \
        ->UseManualTime()                                                                                    \
        ->Unit(benchmark::kMillisecond)

STARTPLAN_MEASURE(LoadOnly);
STARTPLAN_MEASURE(PlanStart);
STARTPLAN_MEASURE(SimulateStart);
STARTPLAN_MEASURE(SimulateStartWithTimes);
STARTPLAN_MEASURE(SimulateStop);
STARTPLAN_MEASURE(WhyOne);
STARTPLAN_MEASURE(DiffOfTheSame);
STARTPLAN_MEASURE(CheckAll);
STARTPLAN_MEASURE(GraphReduced);
STARTPLAN_MEASURE(ReportOfAll);

} // namespace
