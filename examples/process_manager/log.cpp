#include "log.h"

#include <chrono>
#include <cstdio>

#include <unistd.h>

namespace {

const std::chrono::steady_clock::time_point kBegin = std::chrono::steady_clock::now();

void Log(const char* level, const std::string& subject, const std::string& text)
{
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - kBegin;
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.3f", passed.count());
    const std::string line = std::string("process_manager ") + seconds + " " + level + " " + subject +
                             (subject.empty() ? "" : ": ") + text + "\n";
    // A log that nobody reads any more stops no program.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
}

} // namespace

void LogInfo(const std::string& subject, const std::string& text)
{
    Log("info", subject, text);
}
void LogWarning(const std::string& subject, const std::string& text)
{
    Log("warning", subject, text);
}
void LogError(const std::string& subject, const std::string& text)
{
    Log("error", subject, text);
}
