#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_LAUNCH_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_LAUNCH_H

#include <optional>
#include <string>
#include <thread>

#include <startplan/application_manifest.h>
#include <sys/types.h>

#include "descriptor.h"

// A program that has been executed. Whoever holds it waits for it with Wait(), or leaves it to itself.
struct Child {
    Child(pid_t process, Descriptor readyPipe);
    Child(Child&&) = default;
    ~Child();

    // To be called once `exit` is readable, or to wait until then; gives the status of waitpid().
    int Wait();

    pid_t pid;
    std::thread watcher; // stands in where the system has no descriptors for processes
    Descriptor exit;     // readable once the program has ended; its number stays its own until Wait()
    Descriptor ready;    // what a program with "is_reporting" writes; else none
};

// Runs an application's program under `name`, with all that its entry says, and returns when it has been
// executed. Nothing where that failed; the log says why.
//
// The program gets the manager's environment, over it the entry's "env", and two variables of the manager's:
// APP_NAME, by which a member of a family learns which one it is, and READY_FD where the entry says
// "is_reporting". Safe to call from several threads.
std::optional<Child> Launch(const std::string& name, const ApplicationManifest& entry);

// Raises the limit on open descriptors as far as allowed; the programs still get the one from before.
void RaiseDescriptorLimit();

#endif
