// One graph shared by threads that hand out, pop and ask whether it is empty.

#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <syslog.h>

#include "startplan/depend_graph.h"
#include "tests/support/graph_driver.h"
#include "tests/support/log_capture.h"
#include "tests/support/random_seed.h"

namespace {

using test_support::GraphInput;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::Random;
using test_support::RandomGraph;
using test_support::Show;

// What the poppers found, each counted where it happens.
struct Faults {
    std::atomic<int> handedOutTwice{0};
    std::atomic<int> handedOutTooEarly{0};
    std::atomic<int> popRefused{0};
    std::atomic<int> emptyTooEarly{0};
    std::atomic<int> emptyTooLate{0};
};

class DependGraphThreadsTest : public ::testing::TestWithParam<std::size_t> {
protected:
    void Fill(GraphInput input)
    {
        input_ = std::move(input);
        graph_.Update(input_);
        for (const auto& entry : input_) {
            handOuts_[entry.first] = 0;
            isPopBegun_[entry.first] = false;
        }
    }

    // Threads that all take and pop until everything has been popped.
    void RunPoppers(std::size_t count)
    {
        std::vector<std::thread> poppers;
        for (std::size_t i = 0; i < count; ++i) {
            poppers.emplace_back([this] { PopToTheEnd(); });
        }
        for (std::thread& popper : poppers) {
            popper.join();
        }
    }

    void ExpectNoFaults() const
    {
        EXPECT_EQ(0, faults_.handedOutTwice);
        EXPECT_EQ(0, faults_.handedOutTooEarly);
        EXPECT_EQ(0, faults_.popRefused);
        EXPECT_EQ(0, faults_.emptyTooEarly);
        EXPECT_EQ(0, faults_.emptyTooLate);
    }

    GraphInput input_;
    DependGraph graph_;
    std::map<std::string, std::atomic<int>> handOuts_;
    std::map<std::string, std::atomic<bool>> isPopBegun_;
    std::atomic<std::size_t> popsBegun_{0};
    std::atomic<std::size_t> popsDone_{0};
    Faults faults_;
    LogCapture log_;

private:
    void PopToTheEnd()
    {
        while (!AskIsEmpty()) {
            const std::set<std::string> names = graph_.GetNoDependVertices();
            if (names.empty()) {
                std::this_thread::yield(); // another thread holds what this one waits for
            }
            for (const std::string& name : names) {
                Take(name);
            }
        }
    }

    void Take(const std::string& name)
    {
        faults_.handedOutTwice += handOuts_.at(name).fetch_add(1) == 0 ? 0 : 1;
        for (const std::string& dependency : input_.at(name)) {
            faults_.handedOutTooEarly += isPopBegun_.at(dependency) ? 0 : 1;
        }
        isPopBegun_.at(name) = true;
        ++popsBegun_;
        faults_.popRefused += graph_.Pop(name) ? 0 : 1;
        ++popsDone_;
    }

    // Empty exactly when all are popped, as far as the counts on either side of the call can tell.
    bool AskIsEmpty()
    {
        const bool wereAllDone = popsDone_ == input_.size();
        const bool isEmpty = graph_.IsEmpty();
        const bool wereAllBegun = popsBegun_ == input_.size();
        faults_.emptyTooLate += wereAllDone && !isEmpty ? 1 : 0;
        faults_.emptyTooEarly += isEmpty && !wereAllBegun ? 1 : 0;
        return isEmpty;
    }
};

TEST_P(DependGraphThreadsTest, NothingIsLostAndNothingHandedOutTwice)
{
    Random random;
    for (int round = 0; round < 8; ++round) {
        popsBegun_ = 0;
        popsDone_ = 0;
        handOuts_.clear();
        isPopBegun_.clear();
        Fill(RandomGraph(random, 100 + random.Below(100), 1 + random.Below(4), false, 0));
        ASSERT_FALSE(graph_.HasCycle());

        RunPoppers(GetParam());

        EXPECT_TRUE(graph_.IsEmpty());
        EXPECT_EQ(std::set<std::string>(), graph_.GetNoDependVertices());
        for (const auto& [name, times] : handOuts_) {
            EXPECT_EQ(1, times) << name;
        }
        ExpectNoFaults();
        std::multiset<std::string> logged;
        std::multiset<std::string> expected;
        for (const LogLine& line : log_.Take()) {
            EXPECT_EQ(LOG_INFO, line.priority);
            logged.insert(line.text);
        }
        for (const auto& entry : input_) {
            expected.insert("DependGraph Pop: " + entry.first);
        }
        EXPECT_EQ(expected, logged);
    }
}

TEST_P(DependGraphThreadsTest, OneNameIsPoppedByOneThreadOnly)
{
    GraphInput input;
    for (int i = 0; i < 200; ++i) {
        input["v" + std::to_string(i)] = {};
    }
    Fill(input);
    ASSERT_EQ(input.size(), graph_.GetNoDependVertices().size());
    std::atomic<std::size_t> successes{0};

    std::vector<std::thread> poppers;
    for (std::size_t i = 0; i < GetParam(); ++i) {
        poppers.emplace_back([this, &successes] {
            for (const auto& entry : input_) {
                successes += graph_.Pop(entry.first) ? 1U : 0U;
            }
        });
    }
    for (std::thread& popper : poppers) {
        popper.join();
    }

    EXPECT_EQ(input.size(), successes);
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(input.size() * GetParam(), log_.Take().size());
}

// The copy that one thread holds stays good while others go on and while the graph is emptied.
TEST_P(DependGraphThreadsTest, UpdatesAndClearsMayMeetEveryOtherCall)
{
    const GraphInput input = {{"a", {"b", "missing"}}, {"b", {}}, {"c", {"c"}}, {"d", {"b"}}};
    Fill(input);
    std::vector<std::thread> threads;
    std::atomic<std::size_t> unknownNames{0};
    for (std::size_t i = 0; i < GetParam(); ++i) {
        threads.emplace_back([this, &input, &unknownNames, i] {
            for (std::size_t step = 0; step < 100; ++step) {
                if (step % 10 == i % 10) {
                    graph_.Update(input);
                }
                graph_.HasCycle();
                for (const std::string& name : graph_.GetNoDependVertices()) {
                    unknownNames += input.count(name) != 0 || name == "missing" ? 0U : 1U;
                    graph_.Pop(name);
                }
                if (step % 25 == 0) {
                    graph_.Clear();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(0U, unknownNames);
    graph_.Clear();
    EXPECT_TRUE(graph_.IsEmpty());
    EXPECT_EQ(std::set<std::string>(), graph_.GetNoDependVertices());
}

INSTANTIATE_TEST_SUITE_P(Threads, DependGraphThreadsTest, ::testing::Values(2, 4, 16));

} // namespace
