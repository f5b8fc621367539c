#include "application.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <deque>
#include <optional>

#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "launch.h"
#include "log.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kTimeToStart(5000);
constexpr milliseconds kRestartWindow(5000); // one application is restarted within this time
constexpr std::size_t kRestarts = 5;         // so often at most

// Decides how long to wait before a program that has ended is started again; nothing where it is not. It
// succeeded when it exited with status 0; another status, a signal and a failed launch are failures.
//
//     policy              after success    after failure    at the limit on the rate
//     no                  no               no               -
//     on-failure          no               yes              gives up
//     on-until-succeed    no               yes              waits until the limit allows the start
//     on-forever          yes              yes              waits until the limit allows the start
//
// `recent` holds the last kRestarts restarts.
std::optional<milliseconds> NextStart(const std::string& policy, bool succeeded,
                                      std::deque<Clock::time_point>& recent)
{
    if (policy == "no" || (succeeded && policy != "on-forever")) {
        return std::nullopt;
    }
    const Clock::time_point now = Clock::now();
    Clock::time_point next = now;
    if (recent.size() == kRestarts) {
        next = std::max(now, recent.front() + kRestartWindow);
        recent.pop_front();
    }
    if (policy == "on-failure" && next > now) {
        return std::nullopt;
    }
    recent.push_back(next);
    return std::chrono::ceil<milliseconds>(next - now);
}

std::string EndText(int status)
{
    return WIFSIGNALED(status) ? "ended by signal " + std::to_string(WTERMSIG(status))
                               : "exited with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

void Application::Start()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!retired_) {
        life_ = std::async(std::launch::async, &Application::Live, this);
    }
}

bool Application::WaitForStart(const std::function<void()>& late)
{
    std::unique_lock<std::mutex> lock(mutex_);
    const auto isDecided = [this] { return started_ || retired_; };
    changed_.wait_for(lock, kTimeToStart, [&] { return isDecided() || failed_; });
    if (!isDecided()) {
        late();
    }
    changed_.wait(lock, isDecided);
    return started_;
}

bool Application::Retire()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    retired_ = true;
    changed_.notify_all();
    return life_.valid();
}

// With SIGKILL to all of the program's session.
void Application::Signal(int number)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (process_ > 0) {
        kill(number == SIGKILL ? -process_ : process_, number);
    }
}

bool Application::Stop()
{
    Signal(SIGTERM);
    const milliseconds timeOut(entry_.GetTermTimeOut());
    if (life_.wait_for(timeOut) == std::future_status::ready) {
        return true;
    }
    const std::string late = "has not ended " + std::to_string(timeOut.count()) + " ms after SIGTERM";
    if (!entry_.GetIsForceTerm()) {
        Log("error", name_, late + " and is not forced to (is_force_term): it is left running");
        return false;
    }
    Log("warning", name_, late + ": it is killed");
    Signal(SIGKILL);
    life_.wait();
    return true;
}

void Application::Live()
{
    std::deque<Clock::time_point> recentStarts;
    std::optional<milliseconds> wait(0);
    std::unique_lock<std::mutex> lock(mutex_);
    while (wait && !changed_.wait_for(lock, *wait, [this] { return retired_; })) {
        const bool succeeded = RunOnce(lock);
        wait = NextStart(entry_.GetRestart(), succeeded, recentStarts);
        if (wait && !retired_) {
            Log("info", name_, "is restarted in " + std::to_string(wait->count()) + " ms");
        }
        if (!wait && !succeeded && entry_.GetRestart() == "on-failure") {
            Log("error", name_, "is not restarted: the limit on the rate is reached");
        }
    }
}

// From one start of the program to its end; true where it succeeded. The lock is free while the program runs.
bool Application::RunOnce(std::unique_lock<std::mutex>& lock)
{
    Descriptor ready; // open for as long as the program runs, which may write more than it must
    const pid_t process = process_ = Launch(name_, entry_, ready);
    if (process < 0) {
        failed_ = true;
        changed_.notify_all();
        return false;
    }
    Log("info", name_, "runs as process " + std::to_string(process));
    lock.unlock();
    const bool isReady = !entry_.GetIsReporting() || BecomesReady(process, ready.Get());
    lock.lock();
    (isReady ? started_ : failed_) = true;
    changed_.notify_all();
    lock.unlock();
    siginfo_t info;
    while (waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    lock.lock();
    int status = 0;
    waitpid(process, &status, 0); // from here on the number may be another program's
    process_ = -1;
    const bool succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    Log(succeeded || retired_ ? "info" : "warning", name_, EndText(status));
    return succeeded;
}

// False when the program has ended before it reported, or will not report any more.
bool Application::BecomesReady(pid_t process, int ready) const
{
    // Readable once the program has ended, even where a child of its holds the pipe open. Not there before
    // Linux 5.3: poll() passes over it, and the end of the pipe alone must do.
    const Descriptor end(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    std::string text = "\n";
    while (text.find("\nREADY\n") == std::string::npos) {
        pollfd events[] = {{ready, POLLIN, 0}, {end.Get(), POLLIN, 0}};
        if (poll(events, 2, -1) < 0) {
            continue; // interrupted
        }
        char part[64];
        const ssize_t got = events[0].revents != 0 ? read(ready, part, sizeof part) : 0;
        if (got <= 0) {
            Log("error", name_, "did not report readiness before it ended or closed READY_FD");
            return false;
        }
        text.append(part, static_cast<std::size_t>(got));
    }
    Log("info", name_, "is ready");
    return true;
}
