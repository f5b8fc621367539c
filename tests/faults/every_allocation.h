#ifndef STARTPLAN_TESTS_FAULTS_EVERY_ALLOCATION_H
#define STARTPLAN_TESTS_FAULTS_EVERY_ALLOCATION_H

#include <cstdint>
#include <functional>
#include <new>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "tests/faults/failing_allocation.h"

namespace faults {

using Names = std::set<std::string>;
using Rounds = std::vector<Names>;

// Takes everything out of a graph.
inline Rounds Drain(DependGraph& graph)
{
    Rounds rounds;
    for (Names names = graph.GetNoDependVertices(); !names.empty(); names = graph.GetNoDependVertices()) {
        for (const std::string& name : names) {
            graph.Pop(name);
        }
        rounds.push_back(names);
    }
    return rounds;
}

// Whether the operation ran into the fault, which must come out as std::bad_alloc.
inline bool FailsAt(std::uint64_t number, const std::function<void()>& operation)
{
    bool threw = false;
    const FailingAllocation fault(number);
    try {
        operation();
    } catch (const std::bad_alloc&) {
        threw = true;
    }
    EXPECT_EQ(fault.Failed() == Allocator::OPERATOR_NEW, threw);
    EXPECT_NE(Allocator::MALLOC, fault.Failed());
    return threw;
}

// Runs `check` once for each allocation that it makes within FailsAt(), and gives their number.
inline std::uint64_t ForEachAllocation(const std::function<bool(std::uint64_t)>& check)
{
    std::uint64_t number = 1;
    for (bool hasFailed = true; hasFailed; ++number) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        const std::int64_t before = faults::LiveAllocations();
        hasFailed = check(number);
        EXPECT_EQ(before, faults::LiveAllocations());
        if (testing::Test::HasFailure()) {
            break;
        }
    }
    return number - 2;
}

} // namespace faults

#endif
