#include "descriptor.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>

Pipe::Pipe()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    read = Descriptor(ends[0]);
    write = Descriptor(ends[1]);
}

Wake::Wake() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (event_.Get() < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

void Wake::Signal() const
{
    const std::uint64_t one = 1;
    // Fails only when the counter is full, and then the other thread is woken anyway.
    [[maybe_unused]] const ssize_t written = write(event_.Get(), &one, sizeof one);
}

void Wake::Clear() const
{
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = read(event_.Get(), &count, sizeof count);
}

int FirstReadable(std::initializer_list<int> fds, std::chrono::milliseconds timeOut)
{
    std::vector<pollfd> polled;
    for (const int fd : fds) {
        polled.push_back({fd, POLLIN, 0});
    }
    const int wait = static_cast<int>(std::min<std::int64_t>(timeOut.count(), INT_MAX));
    int count = 0;
    do {
        count = poll(polled.data(), polled.size(), wait);
    } while (count < 0 && errno == EINTR);
    const auto first =
        std::find_if(polled.begin(), polled.end(), [](const pollfd& p) { return p.revents != 0; });
    return count > 0 ? static_cast<int>(first - polled.begin()) : -1;
}

void KeepDescriptorsOutOfPrograms()
{
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int fd = std::stoi(entry.path().filename());
        if (fd > STDERR_FILENO) {
            fcntl(fd, F_SETFD, FD_CLOEXEC);
        }
    }
    int fd = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(fd, STDIN_FILENO);
    // Whatever of the standard three was closed is taken too, so that no pipe of ours gets its number.
    while (fd >= 0 && fd <= STDERR_FILENO) {
        fd = open("/dev/null", O_RDWR);
    }
    if (fd >= 0) {
        close(fd);
    }
}
