#ifndef STARTPLAN_TESTS_SUPPORT_LOG_CAPTURE_H
#define STARTPLAN_TESTS_SUPPORT_LOG_CAPTURE_H

#include <ostream>
#include <string>
#include <vector>

#include <syslog.h>

namespace test_support {

// One call of syslog().
struct LogLine {
    int priority = 0;
    std::string text;        // formatted
    std::string format = {}; // as it was passed; not compared
};

inline bool operator==(const LogLine& a, const LogLine& b)
{
    return a.priority == b.priority && a.text == b.text;
}
inline std::ostream& operator<<(std::ostream& out, const LogLine& line)
{
    return out << "<" << line.priority << "> " << line.text;
}

using Lines = std::vector<LogLine>;

// Collects what the library logs while the object lives. The program that links this file defines syslog()
// itself, so no line reaches the system's log. One capture at a time; safe while several threads log.
class LogCapture {
public:
    LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    // The lines so far, in order; the capture is empty afterwards.
    Lines Take();

    // The lines so far of one priority or more urgent ones (LOG_ERR is more urgent than LOG_INFO).
    Lines TakeUpTo(int priority);

    // What errno is after each syslog() call from now on: the library must not depend on it. EIO at first.
    void OverwriteErrnoWith(int value);

    // As the system's own would do if its daemon could be reached: leave errno alone.
    void LeaveErrnoAlone();
};

} // namespace test_support

#endif
