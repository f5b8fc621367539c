// growth_workload WORK SIZE: does one kind of work on an input of this size in Measured(), for the counting
// of its instructions. The right result is checked, so that a shortcut cannot look cheap.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "startplan/application_manifest.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "tests/support/temporary_tree.h"

// Logging is the system's cost.
extern "C" void syslog(int /*priority*/, const char* /*format*/, ...) {}

namespace {

const std::function<void()>* work = nullptr;

void Require(bool condition)
{
    if (!condition) {
        std::fputs("wrong result\n", stderr);
        std::exit(1);
    }
}

std::string NameOf(std::size_t number)
{
    return "application_" + std::to_string(number) + "_x";
}

// Each application depends on ten before it, one in fifty is a pattern of its own.
ParseAndDepend::DependsMap TableOf(std::size_t size)
{
    ParseAndDepend::DependsMap table;
    for (std::size_t i = 0; i < size; ++i) {
        std::set<std::string>& depends = table[NameOf(i) + (i % 50 == 49 ? "_<1-9>" : "")];
        for (std::size_t back = 1; back <= 10 && back <= i; ++back) {
            depends.insert(NameOf(i - back));
        }
    }
    return table;
}

std::vector<std::string> RequestOf(std::size_t size)
{
    std::vector<std::string> request;
    for (std::size_t i = 0; i < size; ++i) {
        request.push_back(NameOf(i) + (i % 50 == 49 ? "_7" : ""));
    }
    return request;
}

// Ten levels, whatever the size.
std::map<std::string, std::set<std::string>> WideGraph(std::size_t size)
{
    std::map<std::string, std::set<std::string>> graph;
    for (std::size_t i = 0; i < size; ++i) {
        graph[NameOf(i)] =
            i < size / 10 ? std::set<std::string>() : std::set<std::string>{NameOf(i - size / 10)};
    }
    return graph;
}

} // namespace

extern "C" __attribute__((noinline)) void Measured()
{
    (*work)();
}

namespace {

void Measure(const std::function<void()>& function)
{
    work = &function;
    Measured();
}

void ParseTree(std::size_t size)
{
    const test_support::TemporaryTree tree;
    std::string entries;
    for (std::size_t i = 0; i < size; ++i) {
        entries += NameOf(i) +
                   ":\n  bin_path: /opt/bin/app\n  uid: 1001\n  arguments: [-a, b, c]\n"
                   "  env: {A: 1, B: 2}\n  restart: on-failure\n  nice: -5\n  core_affinity: [0, 1]\n"
                   "  depends: [" +
                   (i > 0 ? NameOf(i - 1) : "") + "]\n";
    }
    const std::string file = tree.Write("apps.yaml", entries);
    const std::string top = tree.Write("top.yaml", "startup_path_list: [" + file + "]\n");
    ParseAndDepend front;
    std::vector<ApplicationManifest> apps;
    Measure([&] { Require(front.ParseYaml(PARAM_TYPE_YAML, top, apps, {}) == 0); });
    Require(apps.size() == size);
}

void CheckGraph(std::size_t size)
{
    std::map<std::string, std::set<std::string>> filling;
    for (const auto& [name, depends] : TableOf(size)) {
        filling[name] = depends;
    }
    filling[NameOf(0)].insert(NameOf(size - 2)); // a cycle, whose line names nearly all
    DependGraph graph;
    Measure([&] {
        graph.Update(filling);
        Require(graph.HasCycle());
    });
}

void DrainGraph(std::size_t size)
{
    const auto filling = WideGraph(size);
    DependGraph graph;
    std::size_t popped = 0;
    Measure([&] {
        graph.Update(filling);
        while (!graph.IsEmpty()) {
            for (const std::string& name : graph.GetNoDependVertices()) {
                popped += graph.Pop(name) ? 1U : 0U;
            }
        }
    });
    Require(popped == size);
}

void BuildGraph(std::size_t size, bool isStart)
{
    ParseAndDepend front;
    front.SetApplicationDependsMap(TableOf(size));
    const std::vector<std::string> request = RequestOf(size);
    DependGraph graph;
    std::uint32_t result = 1;
    Measure(
        [&] { result = isStart ? front.GetStartGraph(request, graph) : front.GetTermGraph(request, graph); });
    Require(result == 0 && !graph.IsEmpty());
}

void ReadIntervals(std::size_t size)
{
    std::string list;
    for (std::size_t i = 0; i < size; ++i) {
        list +=
            std::to_string(i * 7919 % 100003 * 10) + "-" + std::to_string(i * 7919 % 100003 * 10 + 3) + ",";
    }
    std::map<std::uint32_t, std::uint32_t> intervals;
    Measure([&] { Require(ParseAndDepend().GetIntervals(list, intervals)); });
    Require(intervals.size() == size);
}

void ReplacePlaceholders(std::size_t size)
{
    std::string path;
    std::string expected;
    for (std::size_t i = 0; i < size; ++i) {
        path += "${A}/${unknown}/";
        expected += "value/${unknown}/";
    }
    Measure([&] { ProcMgr::YamlParser().ReplaceByMatchDataInPath(path, {{"A", "value"}}); });
    Require(path == expected);
}

} // namespace

int main(int argc, char** argv)
{
    const std::map<std::string, std::function<void(std::size_t)>> works = {
        {"parse", ParseTree},
        {"graph", CheckGraph},
        {"drain", DrainGraph},
        {"start", [](std::size_t size) { BuildGraph(size, true); }},
        {"stop", [](std::size_t size) { BuildGraph(size, false); }},
        {"intervals", ReadIntervals},
        {"placeholders", ReplacePlaceholders},
    };
    if (argc != 3 || works.count(argv[1]) == 0) {
        std::fputs("usage: growth_workload WORK SIZE\n", stderr);
        return 2;
    }
    works.at(argv[1])(std::strtoul(argv[2], nullptr, 10));
    return 0;
}
