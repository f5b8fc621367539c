#ifndef STARTPLAN_TESTS_DEPEND_GRAPH_COMPARISON_H
#define STARTPLAN_TESTS_DEPEND_GRAPH_COMPARISON_H

#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "tests/support/graph_driver.h"
#include "tests/support/log_capture.h"
#include "tests/support/plain_depend_graph.h"

namespace test_support {

// A graph and a plain one that get the same calls.
class GraphComparisonTest : public ::testing::Test {
protected:
    void Update(const GraphInput& input)
    {
        graph_.Update(input);
        plain_.Update(input);
    }

    // From here to the end: the check where it is asked for, every round, every log line.
    void ExpectAgreement(const GraphInput& input, bool isChecked)
    {
        Update(input);
        if (isChecked) {
            ASSERT_EQ(plain_.HasCycle(), graph_.HasCycle()) << Show(input);
        }
        ASSERT_EQ(HandOutAll(plain_), HandOutAll(graph_)) << Show(input);
        ASSERT_EQ(plainLines_, log_.Take()) << Show(input);
        plainLines_.clear();
    }

    Lines plainLines_;
    PlainDependGraph plain_{plainLines_};
    DependGraph graph_;
    LogCapture log_;
};

} // namespace test_support

#endif
