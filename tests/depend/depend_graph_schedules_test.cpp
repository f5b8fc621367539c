// Many random schedules of threads that share one graph: who hands out, how much of it is popped by whom and in
// which order is drawn anew each time. depend_graph_threads_test.cpp lets all threads run as fast as they can.

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>

#include "startplan/depend_graph.h"
#include "tests/support/graph_driver.h"
#include "tests/support/log_capture.h"
#include "tests/support/random_seed.h"

namespace {

using test_support::GraphInput;
using test_support::LogCapture;
using test_support::Random;
using test_support::RandomGraph;

// Names that are out, taken off in any order by any thread.
class Pool {
public:
    void Add(const std::set<std::string>& names)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        names_.insert(names_.end(), names.begin(), names.end());
        changed_.notify_all();
    }

    // Up to `most` of them, drawn by `engine`.
    std::vector<std::string> Take(std::size_t most, std::mt19937& engine)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        std::vector<std::string> taken;
        while (taken.size() < most && !names_.empty()) {
            std::swap(names_[engine() % names_.size()], names_.back());
            taken.push_back(std::move(names_.back()));
            names_.pop_back();
        }
        return taken;
    }

    // To be told of pops, which may free further names.
    void CountPops(std::size_t count)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        pops_ += count;
        changed_.notify_all();
    }

    std::size_t Pops()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return pops_;
    }

    // Until there are names, or more pops than `seen`.
    void Wait(std::size_t seen)
    {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this, seen] { return !names_.empty() || pops_ != seen; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::string> names_;
    std::size_t pops_ = 0;
};

// One graph, driven to its end by threads.
class Schedule {
public:
    explicit Schedule(GraphInput input) : input_(std::move(input))
    {
        for (const auto& entry : input_) {
            vertices_[entry.first];
        }
        graph_.Update(input_);
    }

    // What each of the threads does.
    void Work(std::mt19937& engine)
    {
        const std::size_t mostAtOnce = std::size_t{1} << engine() % 7;
        while (!AskIsEmpty()) {
            const std::size_t popsSeen = pool_.Pops();
            const std::vector<std::string> names = pool_.Take(1 + engine() % mostAtOnce, engine);
            for (const std::string& name : names) {
                Pop(name);
            }
            pool_.CountPops(names.size());
            if (!names.empty() && engine() % 4 != 0) {
                continue;
            }
            // Where this frees nothing, what the thread waits for is in the hands of others.
            if (!HandOut() && names.empty() && !AskIsEmpty()) {
                pool_.Wait(popsSeen);
            }
        }
    }

    void ExpectOrderlyEnd()
    {
        EXPECT_EQ(0, handedOutTooEarly_);
        EXPECT_EQ(0, popsRefused_);
        EXPECT_EQ(0, emptyTooEarly_);
        EXPECT_EQ(0, emptyTooLate_);
        for (const auto& [name, vertex] : vertices_) {
            EXPECT_EQ(1, vertex.handOuts) << name;
        }
        EXPECT_TRUE(graph_.IsEmpty());
        EXPECT_EQ(std::set<std::string>(), graph_.GetNoDependVertices());
    }

private:
    struct Vertex {
        std::atomic<int> handOuts{0};
        std::atomic<bool> isPopBegun{false};
    };

    // Whether there was something to hand out.
    bool HandOut()
    {
        const std::set<std::string> names = graph_.GetNoDependVertices();
        for (const std::string& name : names) {
            ++vertices_.at(name).handOuts;
            for (const std::string& dependency : input_.at(name)) {
                handedOutTooEarly_ += vertices_.at(dependency).isPopBegun ? 0 : 1;
            }
        }
        pool_.Add(names);
        return !names.empty();
    }

    void Pop(const std::string& name)
    {
        vertices_.at(name).isPopBegun = true;
        ++popsBegun_;
        popsRefused_ += graph_.Pop(name) ? 0 : 1;
        ++popsDone_;
    }

    // Empty exactly when all are popped, as far as the counts on either side of the call can tell.
    bool AskIsEmpty()
    {
        const bool wereAllDone = popsDone_ == input_.size();
        const bool isEmpty = graph_.IsEmpty();
        const bool wereAllBegun = popsBegun_ == input_.size();
        emptyTooLate_ += wereAllDone && !isEmpty ? 1 : 0;
        emptyTooEarly_ += isEmpty && !wereAllBegun ? 1 : 0;
        return isEmpty;
    }

    const GraphInput input_;
    DependGraph graph_;
    Pool pool_;
    std::unordered_map<std::string, Vertex> vertices_; // none is added while threads run
    std::atomic<std::size_t> popsBegun_{0};
    std::atomic<std::size_t> popsDone_{0};
    std::atomic<int> handedOutTooEarly_{0};
    std::atomic<int> popsRefused_{0};
    std::atomic<int> emptyTooEarly_{0};
    std::atomic<int> emptyTooLate_{0};
};

// Holds threads back until all of them are there.
class Barrier {
public:
    explicit Barrier(std::size_t threads)
    {
        pthread_barrier_init(&barrier_, nullptr, static_cast<unsigned>(threads));
    }
    Barrier(const Barrier&) = delete;
    Barrier& operator=(const Barrier&) = delete;
    ~Barrier() { pthread_barrier_destroy(&barrier_); }

    void Wait() { pthread_barrier_wait(&barrier_); }

private:
    pthread_barrier_t barrier_;
};

class DependGraphSchedulesTest : public ::testing::TestWithParam<std::size_t> {
protected:
    // One after the other, each on a graph of its own and by all threads.
    void RunSchedules(std::size_t count, std::size_t leastVertices, std::size_t mostVertices)
    {
        std::deque<Schedule> schedules;
        std::size_t vertices = 0;
        while (schedules.size() < count) {
            const std::size_t size = leastVertices + random_.Below(mostVertices - leastVertices + 1);
            schedules.emplace_back(RandomGraph(random_, size, 1 + random_.Below(4), false, 0));
            vertices += size;
        }

        Barrier barrier(GetParam());
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < GetParam(); ++i) {
            const unsigned seed = static_cast<unsigned>(random_.Below(1U << 31));
            threads.emplace_back([&schedules, &barrier, seed] {
                std::mt19937 engine(seed);
                for (Schedule& schedule : schedules) {
                    barrier.Wait();
                    schedule.Work(engine);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }

        for (Schedule& schedule : schedules) {
            schedule.ExpectOrderlyEnd();
        }
        EXPECT_EQ(vertices, log_.Take().size()); // one line for each pop
    }

    Random random_;
    LogCapture log_;
};

TEST_P(DependGraphSchedulesTest, OfFiveThousandVertices)
{
    RunSchedules(3, 5000, 5000);
}

TEST_P(DependGraphSchedulesTest, OfFewVertices)
{
    RunSchedules(1000, 1, 40);
}

INSTANTIATE_TEST_SUITE_P(Threads, DependGraphSchedulesTest, ::testing::Values(2, 4, 16));

} // namespace
