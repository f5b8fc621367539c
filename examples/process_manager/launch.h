#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_LAUNCH_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_LAUNCH_H

#include <string>
#include <utility>

#include <startplan/application_manifest.h>
#include <unistd.h>

// Owns one file descriptor, or none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(fd_, other.fd_); // `other` closes what was here
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
    int fd_ = -1;
};

// Keeps what the manager was started with away from the programs: all descriptors but standard output and
// error. Raises the manager's own limit on descriptors. To be called once, before there are threads.
void PrepareToLaunch();

// Runs an application's program under `name`, with all that its entry says, and returns its process number
// when it has been executed; -1 where that failed, which is logged. Threads may launch at the same time.
//
// The program leads a session of its own. Its environment is the manager's, over it the entry's "env", and two
// variables of the manager's: APP_NAME, by which a member of a family learns which one it is, and READY_FD
// where the entry says "is_reporting". What the program writes to that descriptor is read from `ready`.
pid_t Launch(const std::string& name, const ApplicationManifest& entry, Descriptor& ready);

#endif
