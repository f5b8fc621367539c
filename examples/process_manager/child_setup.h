#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_CHILD_SETUP_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_CHILD_SETUP_H

#include <string>
#include <vector>

#include <sched.h>
#include <sys/resource.h>
#include <sys/types.h>

#include "descriptor.h"

// The descriptor that a program which reports readiness finds open, and the variable that names it. A
// one-digit number, because a POSIX shell can redirect to no other: echo READY >&"$READY_FD".
inline constexpr int kReadyFd = 3;

// Everything that a child needs between fork() and exec(), made before fork(): other threads may hold any
// lock of the C library then, so the child must neither allocate nor call anything that could lock.
struct ChildSetup {
    std::vector<std::string> arguments;   // the first one is the program's path
    std::vector<std::string> environment; // NAME=value
    bool changeOwner = false;
    uid_t uid = 0;
    gid_t gid = 0;
    int nice = 0;
    bool hasCores = false;
    cpu_set_t cores{};
    int realTimePolicy = SCHED_OTHER;
    std::vector<Descriptor> cgroups; // the cgroup.procs files
    rlimit descriptorLimit{};        // the manager's own one is raised
    int statusFd = -1;               // where ChildReports go; closed by a successful exec()
    int readyFd = -1;                // becomes kReadyFd
};

// What the child could not do. Only the first three mean that the program does not run.
enum class ChildStep { EXEC, OWNER, DESCRIPTORS, NICE, CORES, REAL_TIME, CGROUP };
struct ChildReport {
    ChildStep step;
    int error;
};

// In the child: does what `setup` says and becomes the program. `argv` and `envp` point into it.
[[noreturn]] void RunChild(const ChildSetup& setup, char* const argv[], char* const envp[]);

#endif
