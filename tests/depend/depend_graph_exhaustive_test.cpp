// DependGraph next to the plain graph of tests/support: all small graphs.

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/depend/graph_comparison.h"
#include "tests/support/plain_depend_graph.h"
#include "tests/support/random_seed.h"

namespace {

using test_support::GraphInput;
using test_support::Random;

class DependGraphExhaustiveTest : public test_support::GraphComparisonTest {};

// Bit i * width + k of `edges`: vertex i depends on name k. The vertices are the first names.
GraphInput FromBits(unsigned edges, const std::vector<std::string>& names, std::size_t vertices)
{
    GraphInput input;
    for (std::size_t i = 0; i < vertices; ++i) {
        std::set<std::string>& depends = input[names[i]];
        for (std::size_t k = 0; k < names.size(); ++k) {
            if ((edges >> (i * names.size() + k) & 1U) != 0) {
                depends.insert(names[k]);
            }
        }
    }
    return input;
}

TEST_F(DependGraphExhaustiveTest, EveryGraphOfFourVerticesAgreesWithThePlainModel)
{
    for (unsigned edges = 0; edges < 65536 && !HasFatalFailure(); ++edges) {
        ExpectAgreement(FromBits(edges, {"a", "b", "c", "d"}, 4), true);
    }
}

// In byte order one of the missing names stands before all vertices and one behind them.
TEST_F(DependGraphExhaustiveTest, EveryGraphOfThreeVerticesAndTwoMissingNamesAgreesWithThePlainModel)
{
    for (unsigned edges = 0; edges < 32768 && !HasFatalFailure(); ++edges) {
        ExpectAgreement(FromBits(edges, {"b", "d", "f", "a", "g"}, 3), edges % 4 != 0);
    }
}

// Whether a missing name is met again in the walk that added it is up to where its name hashes.
TEST_F(DependGraphExhaustiveTest, SmallGraphsWithNamesOfAllHashesAgreeWithThePlainModel)
{
    Random random;
    for (int round = 0; round < 5000 && !HasFatalFailure(); ++round) {
        std::vector<std::string> names;
        for (int i = 0; i < 5; ++i) {
            names.push_back(std::to_string(random.Below(100000)) + "_" + std::to_string(i));
        }
        ExpectAgreement(FromBits(static_cast<unsigned>(random.Below(32768)), names, 3), random.OneIn(2));
    }
}

} // namespace
