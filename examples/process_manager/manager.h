#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_MANAGER_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_MANAGER_H

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "application.h"
#include "configuration.h"
#include "control.h"
#include "restart_policy.h"

// Starts, supervises and stops applications in the order of their dependencies.
//
// One thread hands out what the graphs of the requests allow; the applications' threads pop what has started
// or stopped, and wake that thread to hand out more. No number limits how many are under way at once.
class Manager {
public:
    Manager(const Configuration& configuration, const Limits& limits, Control& control);

    // Starts `names` and obeys until SIGTERM or SIGINT, then stops everything. True when all that was to be
    // started had been started by then, and all has stopped.
    bool Run(const std::vector<std::string>& names);

private:
    struct StartRequest {
        std::vector<std::string> names;
        DependGraph graph;
    };
    struct StopRequest {
        DependGraph graph;
        std::atomic<std::size_t> underWay{0};
    };
    using StartPointer = std::shared_ptr<StartRequest>;

    void Start(const std::vector<std::string>& requested);
    bool HandOutStarts(const StartPointer& request);
    void StartFamily(const StartPointer& request, const std::string& family);
    void ReportWaiting(const StartRequest& request, const std::string& name) const;

    void Stop(const std::vector<std::string>& names);
    void HandOutStops();

    void Obey(const Control::Command& command);
    void End();
    Application& Get(const std::string& name);

    const Configuration& configuration_;
    const Limits limits_;
    Control& control_;
    Wake progress_; // something has been popped, or failed
    bool failed_ = false;
    bool ending_ = false;
    std::vector<StartPointer> starts_;  // those that are not complete
    std::shared_ptr<StopRequest> stop_; // the one under way
    // All that were ever started. Destroyed first: their threads use what stands above.
    std::map<std::string, Application> applications_;
};

#endif
