#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_APPLICATION_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_APPLICATION_H

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <startplan/application_manifest.h>

#include "descriptor.h"
#include "launch.h"
#include "restart_policy.h"

// One application from its start to its end. While it is active a thread of its own starts its program, waits
// for it and starts it again as its policy says; Live() reads as the application's life.
//
// The callbacks run on that thread, or at once where there is nothing to wait for.
class Application {
public:
    using Done = std::function<void(bool)>;

    // `entry` outlives the application.
    Application(const std::string& name, const ApplicationManifest& entry, const Limits& limits);
    // Leaves a program that still runs to itself.
    ~Application();

    // Calls `started` with true once the start is complete: the program has been executed and, where its
    // entry says "is_reporting", has written the line READY to the descriptor in its READY_FD. Calls it with
    // false before that, when a start has failed; the policy may still bring another one.
    void WhenStarted(const Done& started);

    // Makes the application active if it is not.
    void Start();

    // Ends it: SIGTERM, then, when the entry's time is over, SIGKILL where the entry forces the end. Calls
    // `stopped` once: with true when nothing runs any more, with false when the program did not end in time
    // and is not forced to; it is still waited for, and not started again.
    void Stop(const Done& stopped);

    bool IsActive() const;
    const ApplicationManifest& Entry() const { return entry_; }

private:
    enum class State { ENDED, STARTING, RUNNING };

    void Live();
    bool RunOnce();
    bool BecomesReady(const Child& child);
    bool WaitForEnd(Child& child);
    bool StopProgram(const Child& child) const;
    bool IsWokenWithin(std::chrono::milliseconds time) const;
    void ReportStart(bool started);
    void ReportStop(bool stopped);

    const std::string name_;
    const ApplicationManifest& entry_;
    const Limits limits_;
    Wake wake_; // says that one of the next two has changed
    std::atomic<bool> stopping_{false};
    std::atomic<bool> leaving_{false};

    mutable std::mutex mutex_; // guards what follows
    State state_ = State::ENDED;
    bool failureReported_ = false;
    std::vector<Done> whenStarted_;
    std::vector<Done> whenStopped_;

    std::thread thread_; // the caller's: touched by Start() and the destructor only
};

#endif
