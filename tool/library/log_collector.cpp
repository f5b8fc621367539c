#include "tool/library/log_collector.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>

#include <syslog.h>

namespace {

tool::LogCollector* innermost = nullptr;

[[gnu::format(printf, 1, 0)]] std::string FormatAll(const char* format, va_list arguments)
{
    std::array<char, 1024> buffer;
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    std::string text;
    if (length >= 0 && static_cast<std::size_t>(length) < buffer.size()) {
        text.assign(buffer.data(), static_cast<std::size_t>(length));
    } else if (length >= 0) {
        text.resize(static_cast<std::size_t>(length) + 1);
        std::vsnprintf(text.data(), text.size(), format, again);
        text.pop_back();
    }
    va_end(again);
    return text;
}

template <class Value>
std::string FormatOne(const std::string& conversion, Value value)
{
    std::array<char, 64> buffer;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const int length = std::snprintf(buffer.data(), buffer.size(), conversion.c_str(), value);
#pragma GCC diagnostic pop
    return length < 0 ? std::string() : std::string(buffer.data());
}

// The argument that one conversion ("%lu") takes. False for a conversion that takes none or is not known:
// nothing behind it can be told any more.
bool TakeArgument(const std::string& conversion, va_list* arguments, std::string& out)
{
    const bool isLong = conversion.find_first_of("lz") != std::string::npos;
    switch (conversion.back()) {
    case 's': {
        const char* text = va_arg(*arguments, const char*);
        out = text == nullptr ? "" : text;
        return true;
    }
    case 'd':
    case 'i':
        out = isLong ? FormatOne(conversion, va_arg(*arguments, long))
                     : FormatOne(conversion, va_arg(*arguments, int));
        return true;
    case 'u':
    case 'x':
    case 'X':
        out = isLong ? FormatOne(conversion, va_arg(*arguments, unsigned long))
                     : FormatOne(conversion, va_arg(*arguments, unsigned));
        return true;
    default:
        return false;
    }
}

std::vector<std::string> SplitArguments(const char* format, va_list* arguments)
{
    std::vector<std::string> split;
    const std::string text = format;
    std::size_t at = 0;
    while ((at = text.find('%', at)) != std::string::npos) {
        const std::size_t end = text.find_first_not_of("0123456789.-+ #lhz", at + 1);
        if (end == std::string::npos) {
            break;
        }
        const std::string conversion = text.substr(at, end + 1 - at);
        at = end + 1;
        std::string argument;
        if (conversion == "%%") {
            continue;
        }
        if (!TakeArgument(conversion, arguments, argument)) {
            break;
        }
        split.push_back(std::move(argument));
    }
    return split;
}

} // namespace

// Takes the place of the C library's for the library.
extern "C" void syslog(int priority, const char* format, ...)
{
    if (innermost == nullptr) {
        return;
    }
    const int before = errno;
    tool::LogLine line;
    line.priority = priority;
    line.format = format;
    if (priority < LOG_INFO || innermost->WantsInfoText()) {
        va_list arguments;
        va_start(arguments, format);
        line.text = FormatAll(format, arguments);
        va_end(arguments);
    }
    if (priority < LOG_INFO) {
        va_list again;
        va_start(again, format);
        line.arguments = SplitArguments(format, &again);
        va_end(again);
    }
    innermost->Add(std::move(line));
    errno = before;
}

namespace tool {

LogCollector::LogCollector(bool wantsInfoText)
    : outer_(std::exchange(innermost, this)), wantsInfoText_(wantsInfoText)
{}

LogCollector::~LogCollector()
{
    innermost = outer_;
}

LogLines LogCollector::Take()
{
    return std::exchange(lines_, {});
}

std::string_view PriorityName(int priority)
{
    constexpr std::array<std::string_view, 8> kNames = {"LOG_EMERG",   "LOG_ALERT",  "LOG_CRIT", "LOG_ERR",
                                                        "LOG_WARNING", "LOG_NOTICE", "LOG_INFO", "LOG_DEBUG"};
    return kNames[static_cast<std::size_t>(LOG_PRI(priority))];
}

} // namespace tool
