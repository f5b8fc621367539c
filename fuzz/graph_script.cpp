// Question: does a graph that is filled, asked, popped and cleared in any order behave as the plain model?
// Asserts beyond not crashing: every result and every log line as in the plain model; no name is handed out
// twice between two fillings unless HasCycle() put it back; a drained graph hands out nothing more; the
// graph keeps no memory once it is gone; allocations in proportion to names and dependencies.
// Refuses a filling for whose missing names the hash table has no room: how much room is then made, and so
// the order in which HasCycle() names vertices, is nobody's promise. Missing names are left out of such a
// filling and the script goes on.
// Input: a script; each byte is an operation or an argument of one.

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "fuzz/fuzz_support.h"
#include "startplan/depend_graph.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_depend_graph.h"

namespace {

using test_support::GraphInput;
using test_support::Lines;
using test_support::LogCapture;
using test_support::PlainDependGraph;

constexpr std::size_t kNames = 40;
constexpr int kMostSteps = 400; // the plain model is quadratic

// Short names, long ones that live on the heap, the empty one, and one that holds a zero byte.
std::string NameOf(std::size_t number)
{
    if (number == 0) {
        return {};
    }
    if (number == 1) {
        return std::string("a\0b", 3);
    }
    return number % 2 == 0 ? "v" + std::to_string(number)
                           : "a_name_longer_than_a_short_string_" + std::to_string(number);
}

GraphInput ReadFilling(fuzz::ByteReader& bytes)
{
    GraphInput filling;
    const std::size_t vertices = bytes.Below(kNames + 1);
    for (std::size_t i = 0; i < vertices; ++i) {
        std::set<std::string>& depends = filling[NameOf(bytes.Below(kNames))];
        for (std::size_t count = bytes.Below(6); count > 0; --count) {
            depends.insert(NameOf(bytes.Below(kNames)));
        }
    }
    return filling;
}

// A longer cycle or chain in a few bytes, which single dependencies are unlikely to make.
GraphInput ReadChain(fuzz::ByteReader& bytes)
{
    GraphInput filling;
    const std::size_t length = 1 + bytes.Below(kNames);
    const bool isClosed = bytes.Below(2) == 1;
    for (std::size_t i = 0; i < length; ++i) {
        std::set<std::string>& depends = filling[NameOf(i)];
        if (i > 0 || isClosed) {
            depends.insert(NameOf((i + length - 1) % length));
        }
    }
    return filling;
}

void DropMissingNames(GraphInput& filling)
{
    for (auto& entry : filling) {
        std::set<std::string> known;
        for (const std::string& name : entry.second) {
            if (filling.count(name) != 0) {
                known.insert(name);
            }
        }
        entry.second = known;
    }
}

class Script {
public:
    explicit Script(fuzz::ByteReader bytes) : bytes_(bytes) {}

    void Run()
    {
        for (int step = 0; step < kMostSteps && !bytes_.IsAtEnd(); ++step) {
            RunOne();
            fuzz::RequireSameLines(log_.Take(), plainLines_);
            plainLines_.clear();
            FUZZ_REQUIRE(graph_.IsEmpty() == plain_.IsEmpty());
        }
    }

private:
    void RunOne()
    {
        switch (bytes_.Below(8)) {
        case 0:
            Fill(ReadFilling(bytes_));
            break;
        case 1:
            Fill(ReadChain(bytes_));
            break;
        case 2:
            handedOut_.clear(); // they may come back
            FUZZ_REQUIRE(graph_.HasCycle() == plain_.HasCycle());
            break;
        case 3:
            PopAll();
            break;
        case 4:
            if (bytes_.Below(8) == 0) { // often enough, and the rest of the script has something to do
                Clear();
            }
            break;
        case 5:
            Pop(NameOf(bytes_.Below(kNames)));
            break;
        default:
            HandOut();
        }
    }

    void Clear()
    {
        graph_.Clear();
        plain_.Clear();
        handedOut_.clear();
    }

    void Fill(GraphInput filling)
    {
        graph_.Update(filling);
        plain_.Update(filling);
        if (!plain_.HasRoomForMissing()) {
            DropMissingNames(filling);
            graph_.Update(filling);
            plain_.Update(filling);
        }
        handedOut_.clear();
    }

    std::set<std::string> HandOut()
    {
        const std::set<std::string> names = graph_.GetNoDependVertices();
        FUZZ_REQUIRE(names == plain_.GetNoDependVertices());
        for (const std::string& name : names) {
            FUZZ_REQUIRE(handedOut_.insert(name).second);
        }
        return names;
    }

    bool Pop(const std::string& name)
    {
        const bool isPopped = graph_.Pop(name);
        FUZZ_REQUIRE(isPopped == plain_.Pop(name));
        return isPopped;
    }

    void PopAll()
    {
        for (std::set<std::string> names = HandOut(); !names.empty(); names = HandOut()) {
            for (const std::string& name : names) {
                FUZZ_REQUIRE(Pop(name));
            }
        }
    }

    fuzz::ByteReader bytes_;
    LogCapture log_;
    Lines plainLines_;
    DependGraph graph_;
    PlainDependGraph plain_{plainLines_};
    std::set<std::string> handedOut_;
};

// What one filling costs without the plain model beside it.
void CheckCost(fuzz::ByteReader bytes)
{
    const LogCapture log;
    const GraphInput filling = ReadFilling(bytes);
    std::size_t edges = 0;
    for (const auto& entry : filling) {
        edges += entry.second.size();
    }
    const fuzz::AllocationMeter meter;
    {
        DependGraph graph;
        graph.Update(filling);
        graph.HasCycle();
        graph.GetNoDependVertices();
        FUZZ_REQUIRE(meter.Allocations() <= 128 + 32 * (filling.size() + edges));
    }
    // The captured line of a cycle outlives the graph.
    FUZZ_REQUIRE(meter.Kept() <= 4);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Script(fuzz::ByteReader(data, size)).Run();
    CheckCost(fuzz::ByteReader(data, size));
    return 0;
}
