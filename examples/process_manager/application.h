#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_APPLICATION_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_APPLICATION_H

#include <condition_variable>
#include <functional>
#include <future>
#include <mutex>
#include <string>

#include <startplan/application_manifest.h>
#include <sys/types.h>

// One application from its start to its end. A thread of its own starts its program, waits for it and starts
// it again as its policy says: Live(). The operations may be called from any thread, Stop() by one at a time.
class Application {
public:
    // `entry` outlives the application, which may be destroyed unless its program runs.
    Application(const std::string& name, const ApplicationManifest& entry) : name_(name), entry_(entry) {}

    const ApplicationManifest& Entry() const { return entry_; }

    // Begins to start it, unless it is retired.
    void Start();
    // Waits until the start is complete, and is true then: the program has been executed and, where its entry
    // says "is_reporting", has written the line READY to the descriptor in its READY_FD. False once it is
    // retired. Calls `late` when a start has failed or takes too long; a restart, or time, may complete it yet.
    bool WaitForStart(const std::function<void()>& late);

    // Nothing starts it from now on, nor restarts it. True where Start() has.
    bool Retire();
    // Ends it, after a Retire() that was true: SIGTERM, then, when the entry's time is over, SIGKILL where the
    // entry forces the end. False where it does not: the program is left running.
    bool Stop();

private:
    void Live();
    bool RunOnce(std::unique_lock<std::mutex>& lock);
    void Signal(int number);
    bool BecomesReady(pid_t process, int ready) const;

    const std::string name_;
    const ApplicationManifest& entry_;
    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    bool started_ = false; // a start was complete, once
    bool failed_ = false;  // a start has failed, once
    bool retired_ = false;
    pid_t process_ = -1;     // of the program, until it has been waited for
    std::future<void> life_; // the thread's, which it waits for when it is destroyed
};

#endif
