#include "tests/faults/failing_allocation.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

// The allocator below the program's own functions: a sanitizer's, else the C library's.
extern "C" {
void* __interceptor_malloc(std::size_t size) __attribute__((weak));
void* __interceptor_calloc(std::size_t count, std::size_t size) __attribute__((weak));
void* __interceptor_realloc(void* memory, std::size_t size) __attribute__((weak));
int __interceptor_posix_memalign(void** memory, std::size_t alignment, std::size_t size)
    __attribute__((weak));
void __interceptor_free(void* memory) __attribute__((weak));
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace {

using faults::Allocator;

// Plain values, since they are used before any constructor has run.
bool isArmed = false;
std::uint64_t untilFailure = 0;
Allocator failed = Allocator::NONE;
std::atomic<std::int64_t> live;

// The first exception of a thread takes memory that libc++ keeps, before anybody counts.
[[maybe_unused]] const bool kHasThrown = [] {
    try {
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        return true;
    }
}();

bool IsToFail(Allocator allocator)
{
    if (!isArmed || --untilFailure != 0) {
        return false;
    }
    failed = allocator;
    return true;
}

void* Raw(std::size_t size)
{
    ++live;
    return __interceptor_malloc != nullptr ? __interceptor_malloc(size) : __libc_malloc(size);
}

void Release(void* memory)
{
    if (memory == nullptr) {
        return;
    }
    --live;
    if (__interceptor_free != nullptr) {
        __interceptor_free(memory);
        return;
    }
    __libc_free(memory);
}

void* Fail()
{
    errno = ENOMEM;
    return nullptr;
}

void* New(std::size_t size)
{
    return IsToFail(Allocator::OPERATOR_NEW) ? nullptr : Raw(size);
}

void* NewOrThrow(std::size_t size)
{
    void* const memory = New(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

extern "C" {

void* malloc(std::size_t size)
{
    return IsToFail(Allocator::MALLOC) ? Fail() : Raw(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    if (IsToFail(Allocator::MALLOC)) {
        return Fail();
    }
    ++live;
    return __interceptor_calloc != nullptr ? __interceptor_calloc(count, size) : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size)
{
    if (IsToFail(Allocator::MALLOC)) {
        return Fail();
    }
    if (memory == nullptr) {
        ++live;
    }
    return __interceptor_realloc != nullptr ? __interceptor_realloc(memory, size)
                                            : __libc_realloc(memory, size);
}

// Counted and never failed: libc++ takes the memory of exceptions by it, std::bad_alloc's own included.
int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept
{
    ++live;
    if (__interceptor_posix_memalign != nullptr) {
        return __interceptor_posix_memalign(memory, alignment, size);
    }
    *memory = __libc_memalign(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}

// The C library's own would not be seen by a sanitizer's allocator.
char* strdup(const char* text) noexcept
{
    const std::size_t size = std::strlen(text) + 1;
    void* const copy = malloc(size);
    return copy != nullptr ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

void free(void* memory)
{
    Release(memory);
}
}

void* operator new(std::size_t size)
{
    return NewOrThrow(size);
}
void* operator new[](std::size_t size)
{
    return NewOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return New(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return New(size);
}
void operator delete(void* memory) noexcept
{
    Release(memory);
}
void operator delete[](void* memory) noexcept
{
    Release(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    Release(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept
{
    Release(memory);
}

namespace faults {

FailingAllocation::FailingAllocation(std::uint64_t number)
{
    failed = Allocator::NONE;
    untilFailure = number;
    isArmed = true;
}

FailingAllocation::~FailingAllocation()
{
    isArmed = false;
}

Allocator FailingAllocation::Failed() const
{
    return failed;
}

std::int64_t LiveAllocations()
{
    return live;
}

} // namespace faults
