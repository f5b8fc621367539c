#include "tests/support/file_calls.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>

#include "tests/support/next_function.h"

namespace {

struct Outcome {
    std::string path;
    int error = 0;
};

struct Stage {
    std::mutex mutex;
    std::map<std::string, Outcome> byCall;
};

Stage& TheStage()
{
    static Stage* const stage = new Stage; // outlives every file that is closed at exit
    return *stage;
}

// The staged errno of a call on this path, 0 for none.
int StagedError(const char* call, const char* path)
{
    Stage& stage = TheStage();
    const std::lock_guard<std::mutex> lock(stage.mutex);
    const auto found = stage.byCall.find(call);
    return found != stage.byCall.end() && found->second.path == path ? found->second.error : 0;
}

} // namespace

extern "C" char* realpath(const char* path, char* resolved) noexcept
{
    static const auto next = test_support::NextFunction<char* (*)(const char*, char*)>("realpath");
    const int error = StagedError("realpath", path);
    if (error != 0) {
        errno = error;
        return nullptr;
    }
    return next(path, resolved);
}

extern "C" FILE* fopen(const char* path, const char* mode)
{
    static const auto next = test_support::NextFunction<FILE* (*)(const char*, const char*)>("fopen");
    if (std::strcmp(mode, "rb") != 0) {
        return next(path, mode);
    }
    if (const int error = StagedError("fopen", path); error != 0) {
        errno = error;
        return nullptr;
    }
    FILE* const file = next(path, mode);
    if (const int error = StagedError("fopen, errno", path); error != 0) {
        errno = error;
    }
    return file;
}

extern "C" int stat(const char* path, struct stat* result) noexcept
{
    if (const int error = StagedError("stat", path); error != 0) {
        errno = error;
        return -1;
    }
    return fstatat(AT_FDCWD, path, result, 0);
}

namespace test_support {

FailingCall::FailingCall(const char* call, const std::string& path, int error) : call_(call)
{
    Stage& stage = TheStage();
    const std::lock_guard<std::mutex> lock(stage.mutex);
    if (!stage.byCall.insert({call_, {path, error}}).second) {
        throw std::logic_error(call_ + " is staged already");
    }
}

FailingCall::~FailingCall()
{
    Stage& stage = TheStage();
    const std::lock_guard<std::mutex> lock(stage.mutex);
    stage.byCall.erase(call_);
}

} // namespace test_support
