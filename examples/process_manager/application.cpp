#include "application.h"

#include <csignal>
#include <cstring>
#include <optional>

#include <sys/wait.h>
#include <unistd.h>

#include "log.h"

namespace {

std::string EndText(int status)
{
    if (WIFSIGNALED(status)) {
        const int number = WTERMSIG(status);
        const char* name = sigabbrev_np(number);
        return "ended by signal " + std::to_string(number) + (name ? std::string(" (SIG") + name + ")" : "");
    }
    return "exited with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

Application::Application(const std::string& name, const ApplicationManifest& entry, const Limits& limits)
    : name_(name), entry_(entry), limits_(limits)
{}

Application::~Application()
{
    leaving_ = true;
    wake_.Signal();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void Application::WhenStarted(const Done& started)
{
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (state_ != State::RUNNING) {
            whenStarted_.push_back(started);
            return;
        }
    }
    started(true);
}

void Application::Start()
{
    if (IsActive()) {
        return;
    }
    if (thread_.joinable()) {
        thread_.join(); // has ended, or is about to
    }
    stopping_ = false;
    wake_.Clear();
    state_ = State::STARTING; // no lock: there is no thread yet
    failureReported_ = false;
    thread_ = std::thread(&Application::Live, this);
}

void Application::Stop(const Done& stopped)
{
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (state_ != State::ENDED) {
            whenStopped_.push_back(stopped);
            stopping_ = true;
            wake_.Signal();
            return;
        }
    }
    stopped(true);
}

bool Application::IsActive() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return state_ != State::ENDED;
}

void Application::Live()
{
    RestartPolicy policy(entry_.GetRestart(), limits_);
    std::optional<std::chrono::milliseconds> wait(0);
    while (wait && !IsWokenWithin(*wait)) {
        const bool succeeded = RunOnce();
        wait = policy.NextStart(succeeded, RestartPolicy::Clock::now());
        if (stopping_ || leaving_) {
            break;
        }
        if (wait) {
            LogInfo(name_,
                    "is restarted in " + std::to_string(wait->count()) + " ms (" + entry_.GetRestart() + ")");
        } else if (entry_.GetRestart() == "on-failure" && !succeeded) {
            LogError(name_, "is not restarted: the limit on the rate is reached");
        }
    }
    ReportStop(true);
}

// From one start of the program to its end; true where it succeeded.
bool Application::RunOnce()
{
    std::optional<Child> child = Launch(name_, entry_);
    if (!child) {
        ReportStart(false);
        return false;
    }
    LogInfo(name_, "runs as process " + std::to_string(child->pid));
    if (!entry_.GetIsReporting() || BecomesReady(*child)) {
        ReportStart(true);
    }
    return WaitForEnd(*child);
}

// False when the program has ended before, will not report any more, or is to be stopped.
bool Application::BecomesReady(const Child& child)
{
    std::string text;
    std::chrono::milliseconds timeOut = limits_.readyTimeOut;
    while (true) {
        const int event = FirstReadable({wake_.Get(), child.ready.Get(), child.exit.Get()}, timeOut);
        if (event == 0) {
            return false;
        }
        if (event == -1) {
            LogWarning(name_, "has not reported readiness for " + std::to_string(timeOut.count()) + " ms");
            ReportStart(false);
            timeOut = kForever;
            continue;
        }
        char part[64];
        const ssize_t got = event == 1 ? read(child.ready.Get(), part, sizeof part) : 0;
        if (got <= 0) {
            LogError(name_, "did not report readiness before it ended or closed READY_FD");
            ReportStart(false);
            return false;
        }
        text.append(part, static_cast<std::size_t>(got));
        if (("\n" + text).find("\nREADY\n") != std::string::npos) {
            LogInfo(name_, "is ready");
            return true;
        }
    }
}

// Stops the program when asked to, and waits until it has ended; true where it succeeded.
bool Application::WaitForEnd(Child& child)
{
    while (FirstReadable({child.exit.Get(), wake_.Get()}, kForever) == 1) {
        wake_.Clear();
        if (leaving_) {
            return false;
        }
        if (StopProgram(child)) {
            break;
        }
        ReportStop(false);
    }
    const int status = child.Wait();
    const bool succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    succeeded || stopping_ ? LogInfo(name_, EndText(status)) : LogWarning(name_, EndText(status));
    const std::lock_guard<std::mutex> lock(mutex_);
    state_ = State::STARTING; // until it runs again
    return succeeded;
}

// True when it has ended. It has not been waited for yet, so its number is still its own.
bool Application::StopProgram(const Child& child) const
{
    const std::chrono::milliseconds timeOut(entry_.GetTermTimeOut());
    kill(child.pid, SIGTERM);
    if (FirstReadable({child.exit.Get()}, timeOut) == 0) {
        return true;
    }
    const std::string late = "has not ended " + std::to_string(timeOut.count()) + " ms after SIGTERM";
    if (!entry_.GetIsForceTerm()) {
        LogError(name_, late + " and is not forced to (is_force_term): it is left running");
        return false;
    }
    LogWarning(name_, late + ": it is killed");
    kill(-child.pid, SIGKILL); // with all of its session
    FirstReadable({child.exit.Get()}, kForever);
    return true;
}

// Whether a stop, or the manager's end, comes within the time.
bool Application::IsWokenWithin(std::chrono::milliseconds time) const
{
    return FirstReadable({wake_.Get()}, time) == 0;
}

void Application::ReportStart(bool started)
{
    std::vector<Done> callbacks;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (started) {
            state_ = State::RUNNING;
            callbacks.swap(whenStarted_);
        } else if (!failureReported_) {
            failureReported_ = true;
            callbacks = whenStarted_;
        }
    }
    for (const Done& callback : callbacks) {
        callback(started);
    }
}

void Application::ReportStop(bool stopped)
{
    std::vector<Done> callbacks;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        state_ = stopped ? State::ENDED : state_;
        callbacks.swap(whenStopped_);
    }
    for (const Done& callback : callbacks) {
        callback(stopped);
    }
}
