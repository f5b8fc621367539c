#ifndef STARTPLAN_TESTS_SUPPORT_FILE_CALLS_H
#define STARTPLAN_TESTS_SUPPORT_FILE_CALLS_H

#include <string>

namespace test_support {

// Staged outcomes of the file calls that the library makes. A program that links this file defines
// realpath(), fopen() and stat() itself; each does the real work unless an outcome is staged for its path.
// Permission bits cannot stage a denial where the tests run as root.

// Makes one call fail for one path, with this errno, while the object lives.
class FailingCall {
public:
    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;

protected:
    FailingCall(const char* call, const std::string& path, int error);
    ~FailingCall();

private:
    std::string call_;
};

struct FailingRealpath : FailingCall {
    FailingRealpath(const std::string& path, int error) : FailingCall("realpath", path, error) {}
};

// Fails an opening with mode "rb" only.
struct FailingFopen : FailingCall {
    FailingFopen(const std::string& path, int error) : FailingCall("fopen", path, error) {}
};

struct FailingStat : FailingCall {
    FailingStat(const std::string& path, int error) : FailingCall("stat", path, error) {}
};

// While the object lives, opening this path with mode "rb" works and leaves this errno behind, as a call
// that succeeds may.
struct FopenLeavingErrno : FailingCall {
    FopenLeavingErrno(const std::string& path, int error) : FailingCall("fopen, errno", path, error) {}
};

} // namespace test_support

#endif
