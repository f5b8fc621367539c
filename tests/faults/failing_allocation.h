#ifndef STARTPLAN_TESTS_FAULTS_FAILING_ALLOCATION_H
#define STARTPLAN_TESTS_FAULTS_FAILING_ALLOCATION_H

#include <cstdint>

namespace faults {

enum class Allocator { NONE, OPERATOR_NEW, MALLOC };

// Makes one allocation of the program fail while the object lives: the one with this number, counted from 1
// from the object's making. Both kinds count: operator new, which throws, and malloc(), calloc(), realloc()
// and strdup(), which give a null pointer and ENOMEM. A program that links this file defines them all. One
// object at a time, on one thread.
class FailingAllocation {
public:
    explicit FailingAllocation(std::uint64_t number);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    // Which kind failed; NONE where fewer allocations were made.
    Allocator Failed() const;
};

// Allocations of the whole program that have not been freed.
std::int64_t LiveAllocations();

} // namespace faults

#endif
