// Every allocation of each graph builder fails once.

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"
#include "tests/faults/every_allocation.h"

namespace {

using namespace faults;

using Builder = std::uint32_t (ParseAndDepend::*)(const std::vector<std::string>&, DependGraph&,
                                                  std::vector<std::string>&) const;

struct BuilderCase {
    const char* name;
    Builder build;
    std::vector<std::string> request;
    std::uint32_t result;
};

const ParseAndDepend::DependsMap kTable = {
    {"application_on_the_ground_floor", {}},
    {"application_on_the_first_floor", {"application_on_the_ground_floor"}},
    {"application_number_<1-30,77>", {"application_on_the_first_floor"}},
    {"one_of_two_that_wait_for_each_other", {"two_of_two_that_wait_for_each_other"}},
    {"two_of_two_that_wait_for_each_other", {"one_of_two_that_wait_for_each_other"}},
};
const std::vector<std::string> kGood = {"application_on_the_ground_floor", "application_number_77",
                                        "application_on_the_first_floor"};
const std::vector<std::string> kUnknown = {"application_on_the_first_floor", "application_number_99",
                                           "nowhere_is_an_application_like_this"};
const std::vector<std::string> kCyclic = {"one_of_two_that_wait_for_each_other",
                                          "two_of_two_that_wait_for_each_other"};
const BuilderCase kBuilders[] = {
    {"start", &ParseAndDepend::GetStartGraphWithErrApp, kGood, 0},
    {"start, unknown names", &ParseAndDepend::GetStartGraphWithErrApp, kUnknown, PARSE_ERR_DEPEND_NOT_FOUND},
    {"start, a cycle", &ParseAndDepend::GetStartGraphWithErrApp, kCyclic, PARSE_ERR_GRAPH_CYCLE},
    {"stop", &ParseAndDepend::GetTermGraphWithErrApp, kGood, 0},
    {"stop, unknown names", &ParseAndDepend::GetTermGraphWithErrApp, kUnknown, PARSE_ERR_DEPEND_NOT_FOUND},
    {"stop, a cycle", &ParseAndDepend::GetTermGraphWithErrApp, kCyclic, PARSE_ERR_GRAPH_CYCLE},
};

TEST(BuildersAllocationTest, ABuilderThatFailedSucceedsOnTheSameGraph)
{
    ParseAndDepend front;
    front.SetApplicationDependsMap(kTable);
    for (const BuilderCase& c : kBuilders) {
        SCOPED_TRACE(c.name);
        DependGraph faultless;
        std::vector<std::string> expectedErrApps;
        ASSERT_EQ(c.result, (front.*c.build)(c.request, faultless, expectedErrApps));
        const Rounds expected = Drain(faultless);

        const std::uint64_t count = ForEachAllocation([&](std::uint64_t number) {
            DependGraph graph;
            std::vector<std::string> errApps;
            const bool hasFailed = FailsAt(number, [&] { (front.*c.build)(c.request, graph, errApps); });
            EXPECT_LE(errApps.size(), expectedErrApps.size());
            EXPECT_EQ(kTable, front.GetApplicationDependsMap());
            graph.IsEmpty();

            errApps.clear();
            EXPECT_EQ(c.result, (front.*c.build)(c.request, graph, errApps));
            EXPECT_EQ(expectedErrApps, errApps);
            EXPECT_EQ(expected, Drain(graph));
            return hasFailed;
        });
        EXPECT_GT(count, 5U);
    }
}

TEST(BuildersAllocationTest, ATableThatCouldNotBeSetCanBeSetAgain)
{
    const std::uint64_t count = ForEachAllocation([](std::uint64_t number) {
        ParseAndDepend front;
        const bool hasFailed = FailsAt(number, [&front] { front.SetApplicationDependsMap(kTable); });
        front.SetApplicationDependsMap(kTable);
        EXPECT_EQ(kTable, front.GetApplicationDependsMap());
        return hasFailed;
    });
    EXPECT_GT(count, 5U);
}

} // namespace
