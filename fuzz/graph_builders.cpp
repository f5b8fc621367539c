// Question: do the start and the stop graph of any request over any dependency table equal those of the
// plain walk?
// Asserts beyond not crashing: code, names not found, every log line, and the whole run of the graph to its
// end as in the plain model; a second build gives the same; the variant without names not found gives the
// same code; the table is untouched; only the caller's objects are kept.
// Refuses a request whose collected graph has missing names for which the hash table has no room: the order
// in which a cycle is named, and the verdict, are then nobody's promise.
// Input: a script; names are made from its bytes and hold no zero byte (a log line ends there).

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_depend_graph.h"
#include "tests/support/plain_graph_builders.h"

namespace {

using test_support::GraphInput;
using test_support::Lines;
using test_support::LogCapture;
using test_support::PlainBuild;
using test_support::PlainDependGraph;
using test_support::PlainGraphBuilders;

// Half of them names and patterns that match each other in many ways, the others put together from pieces.
std::string ReadName(fuzz::ByteReader& bytes)
{
    static const char* const kWhole[] = {"a",
                                         "ab",
                                         "abc",
                                         "b",
                                         "svc",
                                         "svc_a",
                                         "svc_1",
                                         "svc_2",
                                         "svc_<1-3>",
                                         "svc_<*>",
                                         "svc_<*>_x",
                                         "svc_7_x",
                                         "<*>",
                                         "<1-3>",
                                         "<>",
                                         "2",
                                         "9",
                                         "/opt/<*PATH>",
                                         "/opt/a/b",
                                         "/opt/a/../b",
                                         "<*>_<*>",
                                         "",
                                         "svc_<a>",
                                         "svc_<5-3>",
                                         "a>b<1>",
                                         "a_name_longer_than_a_short_string",
                                         "a_name_longer_than_a_short_string_<1-9,20>"};
    static const char* const kPieces[] = {"a",       "b", "svc", "_",    "/",  "<1-3>", "<*>",
                                          "<*PATH>", "1", "2",   "..",   "<>", "<0-2",  ",5>",
                                          "<",       ">", "x",   "\xff", "-",  ",",     "30"};
    const std::uint8_t choice = bytes.Next();
    if (choice < 128) {
        return kWhole[choice % std::size(kWhole)];
    }
    std::string name;
    for (std::size_t count = choice % 6U; count > 0; --count) {
        name += kPieces[bytes.Below(std::size(kPieces))];
    }
    if (choice == 255) {
        name.append(1020, 'y'); // about as long as a pattern may be
    }
    return name;
}

ParseAndDepend::DependsMap ReadTable(fuzz::ByteReader& bytes)
{
    ParseAndDepend::DependsMap table;
    for (std::size_t entries = bytes.Below(24); entries > 0; --entries) {
        std::set<std::string>& depends = table[ReadName(bytes)];
        for (std::size_t count = bytes.Below(5); count > 0; --count) {
            depends.insert(ReadName(bytes));
        }
    }
    return table;
}

// Names of the table as well as others; few, and so many that the library indexes the table.
std::vector<std::string> ReadRequest(fuzz::ByteReader& bytes, const ParseAndDepend::DependsMap& table)
{
    std::vector<std::string> request;
    for (std::size_t count = bytes.Below(80); count > 0; --count) {
        const std::size_t choice = bytes.Next();
        if (choice < 96 || table.empty()) {
            request.push_back(ReadName(bytes));
            continue;
        }
        const std::set<std::string> keys = [&table] {
            std::set<std::string> names;
            for (const auto& entry : table) {
                names.insert(entry.first);
            }
            return names;
        }();
        request.push_back(*std::next(keys.begin(), static_cast<std::ptrdiff_t>(choice % keys.size())));
    }
    return request;
}

bool IsVerdictPromised(const GraphInput& collected)
{
    Lines ignored;
    PlainDependGraph graph(ignored);
    graph.Update(collected);
    return graph.HasRoomForMissing();
}

void RequireSameRun(DependGraph& graph, PlainDependGraph& plain)
{
    for (;;) {
        FUZZ_REQUIRE(graph.IsEmpty() == plain.IsEmpty());
        const std::set<std::string> names = graph.GetNoDependVertices();
        FUZZ_REQUIRE(names == plain.GetNoDependVertices());
        if (names.empty()) {
            return;
        }
        for (const std::string& name : names) {
            FUZZ_REQUIRE(graph.Pop(name) && plain.Pop(name));
        }
    }
}

using Builder = std::uint32_t (ParseAndDepend::*)(const std::vector<std::string>&, DependGraph&,
                                                  std::vector<std::string>&) const;
using ShortBuilder = std::uint32_t (ParseAndDepend::*)(const std::vector<std::string>&, DependGraph&) const;
using PlainBuilder = PlainBuild (PlainGraphBuilders::*)(const std::vector<std::string>&,
                                                        PlainDependGraph&) const;

struct Direction {
    Builder build;
    ShortBuilder buildShort;
    PlainBuilder plain;
};

void Check(const ParseAndDepend& library, const std::vector<std::string>& request, const Direction& direction)
{
    LogCapture log;
    Lines plainLines;
    const PlainGraphBuilders plain(library.GetApplicationDependsMap(), plainLines);
    PlainDependGraph plainGraph(plainLines);
    const PlainBuild expected = (plain.*direction.plain)(request, plainGraph);
    if (!IsVerdictPromised(expected.collected)) {
        return;
    }

    DependGraph graph;
    std::vector<std::string> errApps = {"kept"};
    FUZZ_REQUIRE((library.*direction.build)(request, graph, errApps) == expected.result);
    FUZZ_REQUIRE(errApps.front() == "kept");
    errApps.erase(errApps.begin());
    FUZZ_REQUIRE(errApps == expected.errApps);
    fuzz::RequireSameLines(log.Take(), plainLines);

    DependGraph again;
    FUZZ_REQUIRE((library.*direction.buildShort)(request, again) == expected.result);
    fuzz::RequireSameLines(log.Take(), plainLines);

    plainLines.clear();
    RequireSameRun(graph, plainGraph);
    fuzz::RequireSameLines(log.Take(), plainLines);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto run = [data, size] {
        fuzz::ByteReader bytes(data, size);
        const ParseAndDepend::DependsMap table = ReadTable(bytes);
        const std::vector<std::string> request = ReadRequest(bytes, table);
        ParseAndDepend library;
        library.SetApplicationDependsMap(table);
        Check(library, request,
              {&ParseAndDepend::GetStartGraphWithErrApp, &ParseAndDepend::GetStartGraph,
               &PlainGraphBuilders::Start});
        Check(library, request,
              {&ParseAndDepend::GetTermGraphWithErrApp, &ParseAndDepend::GetTermGraph,
               &PlainGraphBuilders::Term});
        FUZZ_REQUIRE(library.GetApplicationDependsMap() == table);
    };
    const fuzz::AllocationMeter meter;
    run();
    FUZZ_REQUIRE(meter.Kept() == 0);
    return 0;
}
