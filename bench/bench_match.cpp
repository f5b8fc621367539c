// What does it cost to match one name, beside the C library's matcher, and to look one up in a table?
//
// Measured: IsDynamicParaMatch() of short names for each kind of pattern, beside fnmatch(3) with a shell
// pattern that gives the same verdict; and GetAppFromDependsMap() for a name that no key of a table of 10,000
// matches, so that every key is tried. Patterns and names are read from memory anew each time.
//
// A bad number: a match above 50 ns, or slower than fnmatch; more than 1 ns a key in the rows named differs,
// where the first bytes decide, or above about 10 ns a key in a table, where each key is a cache miss: then
// something is copied or allocated before the leading literals are compared.

#include <cstddef>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <fnmatch.h>

#include "bench/generate_tree.h"
#include "startplan/parse_and_depend.h"

namespace {

struct Case {
    const char* pattern;
    const char* shellPattern;
    const char* name;
    bool matches;
};

constexpr Case kSameName = {"camera_front", "camera_front*", "camera_front", true};
constexpr Case kLongerName = {"camera", "camera*", "camera_front", true};
constexpr Case kDiffersAtOnce = {"radar_<1-3>", "radar_[1-3]", "camera_2", false};
constexpr Case kDiffersLater = {"camera_rear_<*>", "camera_rear_*", "camera_front_2", false};
constexpr Case kNumber = {"app_<1-3,5>", "app_[1-35]", "app_5", true};
constexpr Case kNumberOutside = {"app_<1-3,5>", "app_[1-35]", "app_4", false};
constexpr Case kAny = {"svc_<*>", "svc_*", "svc_abcdef", true};
constexpr Case kAnyThenLiteral = {"svc_<*>_x", "svc_*_x*", "svc_abc_x", true};
constexpr Case kPath = {"/opt/<*PATH>", "/opt/*", "/opt/bin/camera", true};
constexpr Case kManyPieces = {"a<1>b<2>c<3>", "a[1]b[2]c[3]", "a1b2c3", true};

void Match(benchmark::State& state, const Case& match)
{
    const ParseAndDepend configuration;
    std::string pattern = match.pattern;
    std::string name = match.name;
    if (configuration.IsDynamicParaMatch(pattern, name) != match.matches) {
        throw std::runtime_error("an unexpected verdict");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(pattern.data());
        benchmark::DoNotOptimize(name.data());
        benchmark::ClobberMemory();
        benchmark::DoNotOptimize(configuration.IsDynamicParaMatch(pattern, name));
    }
}

void Fnmatch(benchmark::State& state, const Case& match)
{
    std::string pattern = match.shellPattern;
    std::string name = match.name;
    if ((fnmatch(pattern.c_str(), name.c_str(), 0) == 0) != match.matches) {
        throw std::runtime_error("an unexpected verdict");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(pattern.data());
        benchmark::DoNotOptimize(name.data());
        benchmark::ClobberMemory();
        benchmark::DoNotOptimize(fnmatch(pattern.c_str(), name.c_str(), 0));
    }
}

// A name that shares its first bytes with none of the keys, or with one in eight of them.
void LookUpAbsent(benchmark::State& state, const char* name)
{
    const auto keys = static_cast<std::size_t>(state.range(0));
    const generate::Table table = generate::RandomTable(keys, 0);
    ParseAndDepend configuration;
    configuration.SetApplicationDependsMap({table.begin(), table.end()});
    const std::string absent = name;
    if (configuration.GetAppFromDependsMap(absent) != configuration.GetApplicationDependsMap().end()) {
        throw std::runtime_error("the name is there");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(configuration.GetAppFromDependsMap(absent));
    }
    state.counters["per_key"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(keys),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

#define MATCH_ROWS(row, match)                                                                               \
    BENCHMARK_CAPTURE(Match, row, match);                                                                    \
    BENCHMARK_CAPTURE(Fnmatch, row, match)

MATCH_ROWS(same_name, kSameName);
MATCH_ROWS(longer_name, kLongerName);
MATCH_ROWS(differs_at_once, kDiffersAtOnce);
MATCH_ROWS(differs_later, kDiffersLater);
MATCH_ROWS(number, kNumber);
MATCH_ROWS(number_outside, kNumberOutside);
MATCH_ROWS(any, kAny);
MATCH_ROWS(any_then_literal, kAnyThenLiteral);
MATCH_ROWS(path, kPath);
MATCH_ROWS(many_pieces, kManyPieces);
BENCHMARK_CAPTURE(LookUpAbsent, nothing_shared, "zzz")->RangeMultiplier(10)->Range(100, 10000);
BENCHMARK_CAPTURE(LookUpAbsent, some_share_a_prefix, "lidar_fusion_x")
    ->RangeMultiplier(10)
    ->Range(100, 10000);

} // namespace
