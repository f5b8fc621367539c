#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_RESTART_POLICY_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_RESTART_POLICY_H

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>

// What the manager allows its programs; set on the command line.
struct Limits {
    std::chrono::milliseconds readyTimeOut{10000};
    std::size_t restarts = 5;                       // of one application ...
    std::chrono::milliseconds restartWindow{10000}; // ... within this time
};

// Decides whether and when a program that has ended is started again. It succeeded when it exited with
// status 0; another status, a signal and a failed start are failures.
//
//     policy              after success    after failure    when the limit on the rate is reached
//     no                  no               no               -
//     on-failure          no               yes              gives up
//     on-until-succeed    no               yes              waits until the limit allows the next start
//     on-forever          yes              yes              waits until the limit allows the next start
class RestartPolicy {
public:
    using Clock = std::chrono::steady_clock;

    RestartPolicy(const std::string& policy, const Limits& limits) : policy_(policy), limits_(limits) {}

    // How long to wait before the next start; nothing where there is to be none.
    std::optional<std::chrono::milliseconds> NextStart(bool succeeded, Clock::time_point now)
    {
        if (policy_ == "no" || (succeeded && policy_ != "on-forever")) {
            return std::nullopt;
        }
        while (!recent_.empty() && now - recent_.front() >= limits_.restartWindow) {
            recent_.pop_front();
        }
        std::chrono::milliseconds wait{0};
        if (recent_.size() >= limits_.restarts) {
            if (policy_ == "on-failure") {
                return std::nullopt;
            }
            wait =
                std::chrono::ceil<std::chrono::milliseconds>(recent_.front() + limits_.restartWindow - now);
        }
        recent_.push_back(now + wait);
        return wait;
    }

private:
    std::string policy_;
    Limits limits_;
    std::deque<Clock::time_point> recent_; // the restarts within the window
};

#endif
