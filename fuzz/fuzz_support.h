#ifndef STARTPLAN_FUZZ_FUZZ_SUPPORT_H
#define STARTPLAN_FUZZ_FUZZ_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/support/log_capture.h"

// Ends the program where a promise is broken. libFuzzer keeps the input; the reproducer names the file.
#define FUZZ_REQUIRE(condition)                                                                              \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            fuzz::Fail(#condition, __FILE__, __LINE__);                                                      \
        }                                                                                                    \
    } while (false)

namespace fuzz {

[[noreturn]] inline void Fail(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, condition);
    std::abort();
}

// Shows the first line in which they differ before it ends the program.
void RequireSameLines(const test_support::Lines& library, const test_support::Lines& plain);

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

// Decisions taken from an input, byte by byte; zeros once it is used up.
class ByteReader {
public:
    ByteReader(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    bool IsAtEnd() const { return left_ == 0; }

    std::uint8_t Next()
    {
        if (left_ == 0) {
            return 0;
        }
        --left_;
        return *data_++;
    }

    // One of 0 to count - 1.
    std::size_t Below(std::size_t count) { return Next() % count; }

private:
    const std::uint8_t* data_;
    std::size_t left_;
};

// Counts what is allocated and freed in the whole program. Only a sanitizer's allocator can be asked: in
// other builds IsOn() is false and all counts stay 0.
class AllocationMeter {
public:
    AllocationMeter(); // counts from here on
    bool IsOn() const;
    std::uint64_t Allocations() const; // how many
    std::int64_t Kept() const;         // how many of them, or of earlier ones, have not been freed

private:
    std::uint64_t allocationsBefore_;
    std::uint64_t freesBefore_;
};

// A folder in memory, where the system has one, and the program's current folder: inputs name files by
// relative paths. Made once in a program and removed at its end.
class InputFolder {
public:
    InputFolder();
    InputFolder(const InputFolder&) = delete;
    InputFolder& operator=(const InputFolder&) = delete;
    ~InputFolder();

    const std::string& Path() const { return path_; }
    void Write(const char* name, std::string_view content) const;

private:
    std::string path_;
};

} // namespace fuzz

#endif
