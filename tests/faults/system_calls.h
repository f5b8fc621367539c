#ifndef STARTPLAN_TESTS_FAULTS_SYSTEM_CALLS_H
#define STARTPLAN_TESTS_FAULTS_SYSTEM_CALLS_H

#include <cstdint>
#include <string>

namespace faults {

enum class SystemCall { REALPATH, FOPEN, READ, STAT, GETPWNAM, GETGRNAM };

// Makes one call of the library fail while the object lives: the one with this number, counted from 1, with
// this errno. READ is counted by files: all reading from the file with this number fails behind its first
// `readable` bytes. A program that links this file defines the calls itself; the user and group database
// knows "app" and "root" only. One object at a time.
class FailingSystemCall {
public:
    FailingSystemCall(SystemCall call, std::uint64_t number, int error, std::size_t readable = 0);
    FailingSystemCall(const FailingSystemCall&) = delete;
    FailingSystemCall& operator=(const FailingSystemCall&) = delete;
    ~FailingSystemCall();

    bool HasFailed() const;
};

// Files opened by the library and not closed yet.
int OpenFiles();

} // namespace faults

#endif
