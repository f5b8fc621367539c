#ifndef STARTPLAN_BENCH_FORMATTED_LOG_H
#define STARTPLAN_BENCH_FORMATTED_LOG_H

#include <cstddef>
#include <cstdint>
#include <vector>

// A program that links formatted_log.cpp has a syslog() of its own. It formats each line into a buffer,
// which the calling thread pays under any log daemon, and hands it to nobody, which differs from daemon to
// daemon.
namespace bench {

// Keeps the calls of syslog() made while one Recording at the most is open, so that they can be made again
// without whatever computed their arguments. What it keeps lies in a few large blocks of its own, so that the
// heap in which the recorded code works is left without holes.
class Recording {
public:
    Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording();

    // Ends the recording. Throws std::runtime_error where making the calls again gives other texts.
    void Close();

    // Makes the same calls again: same formats, same arguments.
    void Replay() const;

    std::size_t Lines() const { return lines_.size(); }

private:
    friend struct Recorder;

    // Each argument as one 64-bit word; strings are pointers into chars_.
    struct Line {
        int priority = 0;
        const char* format = nullptr;
        std::size_t firstWord = 0;
        std::size_t words = 0;
        const char* text = nullptr; // as it came out
    };

    const char* Keep(const char* text);
    void Replay(const Line& line) const;

    std::vector<Line> lines_;
    std::vector<std::uint64_t> words_;
    std::vector<char> chars_;
};

} // namespace bench

#endif
