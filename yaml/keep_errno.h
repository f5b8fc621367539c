#ifndef STARTPLAN_YAML_KEEP_ERRNO_H
#define STARTPLAN_YAML_KEEP_ERRNO_H

#include <cerrno>

namespace startplan {

// Puts errno back at the end of its scope. The tree walk asks for EACCES long after the call that set it,
// with log lines in between, and syslog() may fail to reach its daemon and leave an errno of its own.
class KeepErrno {
public:
    KeepErrno() : saved_(errno) {}
    KeepErrno(const KeepErrno&) = delete;
    KeepErrno& operator=(const KeepErrno&) = delete;
    ~KeepErrno() { errno = saved_; }

private:
    const int saved_;
};

} // namespace startplan

#endif
