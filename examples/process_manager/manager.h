#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_MANAGER_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_MANAGER_H

#include <map>
#include <string>

#include "application.h"
#include "configuration.h"

// Starts, supervises and stops applications in the order of their dependencies.
class Manager {
public:
    // `names`, which can be started, and all that they need are to run.
    Manager(const Configuration& configuration, const Names& names);

    // All that is to run.
    const Names& Applications() const { return names_; }

    // Starts everything; true once that is complete. What needs an application whose start is not complete
    // waits until a restart completes it or everything is to be stopped; the result is false then.
    bool Start();

    // Stops `names`, and before them what needs them; true when nothing of that runs any more. May be called
    // while another thread is in Start(), which starts nothing of that from then on.
    bool Stop(const Names& names);

private:
    bool StartVertex(const std::string& vertex);
    void ReportWaiting(const std::string& name) const;

    const Configuration& configuration_;
    const Names names_;
    std::map<std::string, Application> applications_; // does not change, the applications do
};

#endif
