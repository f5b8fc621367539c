#include "child_setup.h"

#include <cerrno>

#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <unistd.h>

namespace {

void Report(int statusFd, ChildStep step)
{
    const ChildReport report{step, errno};
    [[maybe_unused]] const ssize_t written = write(statusFd, &report, sizeof report);
}

[[noreturn]] void Fail(int statusFd, ChildStep step)
{
    Report(statusFd, step);
    _exit(127);
}

// The manager blocks and ignores signals of its own; a program begins with none of that.
void ResetSignals()
{
    for (int signal = 1; signal < NSIG; ++signal) {
        std::signal(signal, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// What the system may refuse: the program runs all the same, and the manager warns.
void SetScheduling(const ChildSetup& setup, int statusFd)
{
    for (const Descriptor& procs : setup.cgroups) {
        if (write(procs.Get(), "0", 1) != 1) { // 0 stands for the process that writes
            Report(statusFd, ChildStep::CGROUP);
        }
    }
    if (setup.hasCores && sched_setaffinity(0, sizeof setup.cores, &setup.cores) != 0) {
        Report(statusFd, ChildStep::CORES);
    }
    if (setup.nice != 0 && setpriority(PRIO_PROCESS, 0, setup.nice) != 0) {
        Report(statusFd, ChildStep::NICE);
    }
    const sched_param lowest{sched_get_priority_min(setup.realTimePolicy)};
    if (setup.realTimePolicy != SCHED_OTHER && sched_setscheduler(0, setup.realTimePolicy, &lowest) != 0) {
        Report(statusFd, ChildStep::REAL_TIME);
    }
}

void PassReadyDescriptor(const ChildSetup& setup, int statusFd)
{
    if (setup.readyFd < 0) {
        return;
    }
    const int result =
        setup.readyFd == kReadyFd ? fcntl(kReadyFd, F_SETFD, 0) : dup2(setup.readyFd, kReadyFd);
    if (result < 0) {
        Fail(statusFd, ChildStep::DESCRIPTORS);
    }
}

} // namespace

void RunChild(const ChildSetup& setup, char* const argv[], char* const envp[])
{
    // Out of the way of kReadyFd.
    const int statusFd = fcntl(setup.statusFd, F_DUPFD_CLOEXEC, kReadyFd + 1);
    // A session of its own: Ctrl-C in the manager's terminal reaches the manager alone, which then stops the
    // programs in their order, and a forced stop can kill all that the program has left behind.
    setsid();
    SetScheduling(setup, statusFd);
    if (setup.changeOwner &&
        (setgroups(0, nullptr) != 0 || setgid(setup.gid) != 0 || setuid(setup.uid) != 0)) {
        Fail(statusFd, ChildStep::OWNER);
    }
    PassReadyDescriptor(setup, statusFd);
    setrlimit(RLIMIT_NOFILE, &setup.descriptorLimit);
    ResetSignals();
    execve(argv[0], argv, envp);
    Fail(statusFd, ChildStep::EXEC);
}
