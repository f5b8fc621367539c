#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_DESCRIPTOR_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_DESCRIPTOR_H

#include <chrono>
#include <initializer_list>
#include <utility>

#include <unistd.h>

// Owns one file descriptor, or none.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Descriptor()
    {
        if (fd_ >= 0) {
            close(fd_);
        }
    }
    int Get() const { return fd_; }

private:
    int fd_;
};

// Both ends of a new pipe, closed on exec. Throws std::system_error.
struct Pipe {
    Pipe();
    Descriptor read;
    Descriptor write;
};

// A counter that one thread adds to in order to wake another one that waits for it to be readable.
class Wake {
public:
    Wake();
    int Get() const { return event_.Get(); }
    void Signal() const;
    void Clear() const;

private:
    Descriptor event_;
};

inline constexpr std::chrono::milliseconds kForever{-1};

// Waits until one of the descriptors can be read or is at its end, and gives the position of the first one
// that is; -1 when the time is over. Negative descriptors are passed over.
int FirstReadable(std::initializer_list<int> fds, std::chrono::milliseconds timeOut);

// Every descriptor that this process was started with, standard output and error apart, stays out of the
// programs: what was inherited is closed on exec, and standard input reads nothing.
void KeepDescriptorsOutOfPrograms();

#endif
