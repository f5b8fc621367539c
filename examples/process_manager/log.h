#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_LOG_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_LOG_H

#include <string>

// One line on standard error, written at once, so that lines of several threads do not mix:
//
//     process_manager 0.012 warning camera_2: cannot set the real-time policy: Operation not permitted
//
// The time is in seconds since the manager began. An empty subject leaves out the name and its colon. The
// library's own lines go to the system log.
void LogInfo(const std::string& subject, const std::string& text);
void LogWarning(const std::string& subject, const std::string& text);
void LogError(const std::string& subject, const std::string& text);

#endif
