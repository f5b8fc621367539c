#include "bench/formatted_log.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

#include <syslog.h>

// An int that travels as a 64-bit word is read back by va_arg() from the word's lower half: so do the
// calling conventions of the 64-bit little-endian Linux systems. Close() verifies it for every line.
static_assert(sizeof(long) == sizeof(std::uint64_t) && sizeof(void*) == sizeof(std::uint64_t));
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__);

namespace {

constexpr std::size_t kLongestLine = 8192;
char theLine[kLongestLine];
bench::Recording* theRecording = nullptr;

// What makes the calls again; a pointer, since the compiler would ask for a literal format.
void (*const kLog)(int, const char*, ...) = syslog;

constexpr std::size_t kFewWords = 4;
constexpr std::size_t kSomeWords = 12;
constexpr std::size_t kMostWords = 28;

// Room for one recording. Memory that is not used costs nothing.
constexpr std::size_t kMostLines = 200000;
constexpr std::size_t kTypicalLine = 1024;

template <class Line, std::size_t... I>
void LogWords(const Line& line, const std::uint64_t* words, std::index_sequence<I...> /*places*/)
{
    kLog(line.priority, line.format, words[I]...);
}

std::size_t PaddedCount(std::size_t words)
{
    if (words > kMostWords) {
        throw std::runtime_error("a log line has too many arguments");
    }
    if (words > kSomeWords) {
        return kMostWords;
    }
    return words > kFewWords ? kSomeWords : kFewWords;
}

// A va_list that can be handed on by reference, whatever type it is.
struct Arguments {
    va_list list;
};

} // namespace

namespace bench {

struct Recorder {
    static void Add(Recording& recording, int priority, const char* format, Arguments& arguments)
    {
        const std::size_t first = recording.words_.size();
        for (const char* at = std::strchr(format, '%'); at != nullptr; at = std::strchr(at, '%')) {
            at += 1 + std::strspn(at + 1, "0123456789.-+ #");
            const std::size_t modifiers = std::strspn(at, "lz");
            at += modifiers;
            AddArgument(recording, *at, modifiers > 0, arguments);
        }
        const std::size_t count = PaddedCount(recording.words_.size() - first);
        recording.words_.resize(first + count, 0);
        recording.lines_.push_back({priority, format, first, count, recording.Keep(theLine)});
    }

private:
    static void AddArgument(Recording& recording, char conversion, bool isLong, Arguments& arguments)
    {
        if (conversion == 's') {
            const char* text = recording.Keep(va_arg(arguments.list, const char*));
            recording.words_.push_back(reinterpret_cast<std::uintptr_t>(text));
            return;
        }
        if (std::strchr("dux", conversion | 0x20) == nullptr || conversion == '\0') {
            throw std::runtime_error("a log line has a conversion that cannot be recorded");
        }
        recording.words_.push_back(isLong ? va_arg(arguments.list, unsigned long)
                                          : va_arg(arguments.list, unsigned int));
    }
};

Recording::Recording()
{
    lines_.reserve(kMostLines);
    words_.reserve(kMostLines * kSomeWords);
    chars_.reserve(kMostLines * kTypicalLine);
    theRecording = this;
}

Recording::~Recording()
{
    if (theRecording == this) {
        theRecording = nullptr;
    }
}

void Recording::Close()
{
    theRecording = nullptr;
    for (const Line& line : lines_) {
        Replay(line);
        if (std::strcmp(line.text, theLine) != 0) {
            throw std::runtime_error(std::string("a recorded log line reads differently: ") + line.text);
        }
    }
}

const char* Recording::Keep(const char* text)
{
    const std::size_t size = std::strlen(text) + 1;
    if (lines_.size() == kMostLines || chars_.size() + size > chars_.capacity()) {
        throw std::runtime_error("too much is logged for one recording");
    }
    chars_.insert(chars_.end(), text, text + size); // never moves: there is room
    return &chars_[chars_.size() - size];
}

void Recording::Replay() const
{
    for (const Line& line : lines_) {
        Replay(line);
    }
}

void Recording::Replay(const Line& line) const
{
    const std::uint64_t* words = &words_[line.firstWord];
    switch (line.words) {
    case kFewWords:
        return LogWords(line, words, std::make_index_sequence<kFewWords>());
    case kSomeWords:
        return LogWords(line, words, std::make_index_sequence<kSomeWords>());
    default:
        return LogWords(line, words, std::make_index_sequence<kMostWords>());
    }
}

} // namespace bench

extern "C" void syslog(int priority, const char* format, ...)
{
    Arguments arguments;
    va_start(arguments.list, format);
    std::vsnprintf(theLine, sizeof(theLine), format, arguments.list);
    va_end(arguments.list);
    if (theRecording != nullptr) {
        va_start(arguments.list, format);
        bench::Recorder::Add(*theRecording, priority, format, arguments);
        va_end(arguments.list);
    }
}
