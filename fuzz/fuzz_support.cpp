#include "fuzz/fuzz_support.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

// Of the sanitizers' allocators; absent in other builds.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*, std::size_t),
                                                         void (*onFree)(const volatile void*))
    __attribute__((weak));

namespace {

std::atomic<std::uint64_t> allocationCount;
std::atomic<std::uint64_t> freeCount;

void OnMalloc(const volatile void* /*memory*/, std::size_t /*size*/)
{
    ++allocationCount;
}

void OnFree(const volatile void* memory)
{
    if (memory != nullptr) {
        ++freeCount;
    }
}

bool InstallHooks()
{
    return __sanitizer_install_malloc_and_free_hooks != nullptr &&
           __sanitizer_install_malloc_and_free_hooks(OnMalloc, OnFree) != 0;
}

bool HasHooks()
{
    static const bool hasHooks = InstallHooks();
    return hasHooks;
}

void Show(const char* side, const test_support::Lines& lines, std::size_t index)
{
    if (index < lines.size()) {
        std::fprintf(stderr, "%s line %zu: <%d> %s\n", side, index, lines[index].priority,
                     lines[index].text.c_str());
    } else {
        std::fprintf(stderr, "%s has no line %zu\n", side, index);
    }
}

} // namespace

namespace fuzz {

void RequireSameLines(const test_support::Lines& library, const test_support::Lines& plain)
{
    if (library == plain) {
        return;
    }
    std::size_t index = 0;
    while (index < std::min(library.size(), plain.size()) && library[index] == plain[index]) {
        ++index;
    }
    Show("library", library, index);
    Show("plain model", plain, index);
    FUZZ_REQUIRE(library == plain);
}

AllocationMeter::AllocationMeter()
{
    HasHooks();
    allocationsBefore_ = allocationCount;
    freesBefore_ = freeCount;
}

bool AllocationMeter::IsOn() const
{
    return HasHooks();
}

std::uint64_t AllocationMeter::Allocations() const
{
    return allocationCount - allocationsBefore_;
}

std::int64_t AllocationMeter::Kept() const
{
    return static_cast<std::int64_t>(allocationCount - allocationsBefore_) -
           static_cast<std::int64_t>(freeCount - freesBefore_);
}

InputFolder::InputFolder()
{
    const std::filesystem::path memory = "/dev/shm";
    const bool hasMemory = access(memory.c_str(), W_OK) == 0;
    path_ = (hasMemory ? memory : std::filesystem::temp_directory_path()) / "startplan_fuzz_XXXXXX";
    FUZZ_REQUIRE(mkdtemp(path_.data()) != nullptr);
    std::filesystem::current_path(path_);
}

InputFolder::~InputFolder()
{
    std::error_code ignored;
    std::filesystem::current_path("/", ignored);
    std::filesystem::remove_all(path_, ignored);
}

void InputFolder::Write(const char* name, std::string_view content) const
{
    const int file = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    FUZZ_REQUIRE(file >= 0);
    FUZZ_REQUIRE(write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size()));
    close(file);
}

} // namespace fuzz
