#include "tests/faults/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/next_function.h"

namespace {

using faults::SystemCall;

struct Fault {
    bool isArmed = false;
    SystemCall call = SystemCall::REALPATH;
    std::uint64_t until = 0;
    int error = 0;
    std::size_t readable = 0;
    bool hasFailed = false;
};
Fault fault;
int openFiles = 0;

bool IsToFail(SystemCall call)
{
    if (!fault.isArmed || fault.call != call || --fault.until != 0) {
        return false;
    }
    fault.hasFailed = true;
    errno = fault.error;
    return true;
}

// A file that the library reads: every close is seen, and reading can be made to fail.
struct Stream {
    int file;
    bool failsToRead;
    std::size_t left; // what can be read before that
};

ssize_t Read(void* cookie, char* buffer, std::size_t size)
{
    auto* const stream = static_cast<Stream*>(cookie);
    if (!stream->failsToRead) {
        return read(stream->file, buffer, size);
    }
    if (stream->left == 0) {
        errno = fault.error;
        return -1;
    }
    const ssize_t got = read(stream->file, buffer, std::min(size, stream->left));
    stream->left -= static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    return got;
}

int Close(void* cookie)
{
    auto* const stream = static_cast<Stream*>(cookie);
    const int result = close(stream->file);
    delete stream;
    --openFiles;
    return result;
}

FILE* OpenStream(const char* path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return nullptr;
    }
    auto* const stream = new Stream{file, IsToFail(SystemCall::READ), fault.readable};
    ++openFiles;
    cookie_io_functions_t functions = {};
    functions.read = Read;
    functions.close = Close;
    return fopencookie(stream, "rb", functions);
}

} // namespace

extern "C" {

char* realpath(const char* path, char* resolved) noexcept
{
    static const auto next = test_support::NextFunction<char* (*)(const char*, char*)>("realpath");
    return IsToFail(SystemCall::REALPATH) ? nullptr : next(path, resolved);
}

FILE* fopen(const char* path, const char* mode)
{
    static const auto next = test_support::NextFunction<FILE* (*)(const char*, const char*)>("fopen");
    if (std::strcmp(mode, "rb") != 0) {
        return next(path, mode); // not the library's
    }
    return IsToFail(SystemCall::FOPEN) ? nullptr : OpenStream(path);
}

int stat(const char* path, struct stat* result) noexcept
{
    return IsToFail(SystemCall::STAT) ? -1 : fstatat(AT_FDCWD, path, result, 0);
}

passwd* getpwnam(const char* name)
{
    static passwd account; // filled anew each time, since the library wipes what it gets
    account.pw_uid = name[0] == 'r' ? 0 : 1234;
    const bool isKnown = std::strcmp(name, "root") == 0 || std::strcmp(name, "app") == 0;
    return IsToFail(SystemCall::GETPWNAM) || !isKnown ? nullptr : &account;
}

group* getgrnam(const char* name)
{
    static group account;
    account.gr_gid = name[0] == 'r' ? 0 : 4321;
    const bool isKnown = std::strcmp(name, "root") == 0 || std::strcmp(name, "app") == 0;
    return IsToFail(SystemCall::GETGRNAM) || !isKnown ? nullptr : &account;
}
}

namespace faults {

FailingSystemCall::FailingSystemCall(SystemCall call, std::uint64_t number, int error, std::size_t readable)
{
    fault = {true, call, number, error, readable, false};
}

FailingSystemCall::~FailingSystemCall()
{
    fault.isArmed = false;
}

bool FailingSystemCall::HasFailed() const
{
    return fault.hasFailed;
}

int OpenFiles()
{
    return openFiles;
}

} // namespace faults
