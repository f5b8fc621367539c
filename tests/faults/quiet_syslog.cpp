#include "tests/faults/quiet_syslog.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include <syslog.h>

namespace {

int errnoAfter = EACCES;
unsigned long lines = 0;

} // namespace

// Formats each line, so that its arguments are read, into room that is there already.
extern "C" void syslog(int /*priority*/, const char* format, ...)
{
    static char text[16384];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    ++lines;
    errno = errnoAfter;
}

namespace faults {

void LeaveErrnoAfterSyslog(int value)
{
    errnoAfter = value;
}

unsigned long LinesLogged()
{
    return lines;
}

} // namespace faults
