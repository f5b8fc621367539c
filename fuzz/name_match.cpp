// Question: does a name match a pattern exactly where the plain model says so, with the same log lines?
// Asserts beyond not crashing: results, pieces and log lines as in the plain model; a match that logs
// nothing allocates nothing; at most three lines a match.
// Refuses nothing. Input: the pattern, a newline, the name (which may hold further newlines).

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_support.h"
#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_patterns.h"

namespace {

using test_support::Lines;
using test_support::LogCapture;
using test_support::PlainPatterns;

void CheckPieces(const ParseAndDepend& library, const PlainPatterns& plain, const std::string& pattern,
                 const std::string& name)
{
    ParseAndDepend::SplitedStr split;
    ParseAndDepend::SplitedStr plainSplit;
    library.SplitPattern(pattern, split);
    plain.SplitPattern(pattern, plainSplit);
    FUZZ_REQUIRE(split.patternTypes == plainSplit.patternTypes);
    FUZZ_REQUIRE(split.patternStrs == plainSplit.patternStrs);
    FUZZ_REQUIRE(library.SplitPara(name, split) == plain.SplitPara(name, plainSplit));
    FUZZ_REQUIRE(split.paraStrs == plainSplit.paraStrs);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input = fuzz::TextOf(data, size);
    const std::size_t newline = input.find('\n');
    const std::string pattern(input.substr(0, newline));
    const std::string name(newline == std::string_view::npos ? "" : input.substr(newline + 1));

    const ParseAndDepend library;
    Lines plainLines;
    const PlainPatterns plain(plainLines);
    LogCapture log;

    const fuzz::AllocationMeter meter;
    const bool matches = library.IsDynamicParaMatch(pattern, name);
    const std::uint64_t allocations = meter.Allocations();
    const Lines lines = log.Take();
    FUZZ_REQUIRE(lines.size() <= 3);
    FUZZ_REQUIRE(!lines.empty() || allocations == 0);

    FUZZ_REQUIRE(matches == plain.IsDynamicParaMatch(pattern, name));
    fuzz::RequireSameLines(lines, plainLines);
    FUZZ_REQUIRE(library.IsDynamicParaMatch(pattern, name) == matches);
    fuzz::RequireSameLines(log.Take(), plainLines);

    FUZZ_REQUIRE(library.IsDynamicPara(pattern) == plain.IsDynamicPara(pattern));
    FUZZ_REQUIRE(library.CheckPathTypePara(pattern, name) == (name.find("..") == std::string::npos));
    FUZZ_REQUIRE(library.CheckAnyTypePara(pattern, name));
    CheckPieces(library, plain, pattern, name);
    FUZZ_REQUIRE(log.Take().empty());
    return 0;
}
