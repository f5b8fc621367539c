#include "tests/support/log_capture.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <iterator>
#include <mutex>
#include <utility>

namespace {

struct Capture {
    std::mutex mutex;
    bool isOn = false;
    bool overwritesErrno = true;
    int errnoAfter = EIO;
    test_support::Lines lines;
};

Capture& TheCapture()
{
    static Capture capture;
    return capture;
}

[[gnu::format(printf, 1, 0)]] std::string Format(const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    text.pop_back();
    return text;
}

} // namespace

// Takes the place of the C library's for the library under test.
extern "C" void syslog(int priority, const char* format, ...)
{
    const int before = errno;
    va_list arguments;
    va_start(arguments, format);
    std::string text = Format(format, arguments);
    va_end(arguments);

    Capture& capture = TheCapture();
    const std::lock_guard<std::mutex> lock(capture.mutex);
    if (capture.isOn) {
        capture.lines.push_back({priority, std::move(text), format});
    }
    errno = capture.isOn && capture.overwritesErrno ? capture.errnoAfter : before;
}

namespace test_support {

LogCapture::LogCapture()
{
    Capture& capture = TheCapture();
    const std::lock_guard<std::mutex> lock(capture.mutex);
    capture.isOn = true;
    capture.overwritesErrno = true;
    capture.errnoAfter = EIO;
    capture.lines.clear();
}

LogCapture::~LogCapture()
{
    Capture& capture = TheCapture();
    const std::lock_guard<std::mutex> lock(capture.mutex);
    capture.isOn = false;
    capture.lines.clear();
}

Lines LogCapture::Take()
{
    Capture& capture = TheCapture();
    const std::lock_guard<std::mutex> lock(capture.mutex);
    return std::exchange(capture.lines, {});
}

Lines LogCapture::TakeUpTo(int priority)
{
    const Lines all = Take();
    Lines urgent;
    std::copy_if(all.begin(), all.end(), std::back_inserter(urgent),
                 [priority](const LogLine& line) { return line.priority <= priority; });
    return urgent;
}

void LogCapture::OverwriteErrnoWith(int value)
{
    Capture& capture = TheCapture();
    const std::lock_guard<std::mutex> lock(capture.mutex);
    capture.overwritesErrno = true;
    capture.errnoAfter = value;
}

void LogCapture::LeaveErrnoAlone()
{
    Capture& capture = TheCapture();
    const std::lock_guard<std::mutex> lock(capture.mutex);
    capture.overwritesErrno = false;
}

} // namespace test_support
