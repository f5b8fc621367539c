#ifndef STARTPLAN_BENCH_FORMATTED_LOG_H
#define STARTPLAN_BENCH_FORMATTED_LOG_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

// A program that links formatted_log.cpp has a syslog() of its own. It formats each line into a buffer,
// which the calling thread pays under any log daemon, and hands it to nobody, which differs from daemon to
// daemon.
namespace bench {

// Keeps the calls of syslog() made while one Recording at the most is open, so that they can be made again
// without whatever computed their arguments.
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

    // Each argument as one 64-bit word; strings are pointers into strings_.
    struct Line {
        int priority = 0;
        const char* format = nullptr;
        std::size_t firstWord = 0;
        std::size_t words = 0;
    };

    void Replay(const Line& line) const;

    std::vector<Line> lines_;
    std::vector<std::uint64_t> words_;
    std::deque<std::string> strings_;
    std::vector<std::string> texts_; // until Close()
};

} // namespace bench

#endif
