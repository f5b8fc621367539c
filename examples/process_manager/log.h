#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_LOG_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_LOG_H

#include <string>

#include <unistd.h>

// Writes one line to standard error, in one piece, so that the lines of several threads do not mix:
//
//     process_manager warning camera_2: cannot set the real-time policy rr: Operation not permitted
//
// `level` is "info", "warning" or "error"; without a `subject` the name and its colon are left out. The
// library's own lines go to the system log.
inline void Log(const char* level, const std::string& subject, const std::string& text)
{
    const std::string line =
        std::string("process_manager ") + level + " " + subject + (subject.empty() ? "" : ": ") + text + "\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
}

#endif
