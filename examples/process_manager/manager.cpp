#include "manager.h"

#include <algorithm>

#include "log.h"

namespace {

std::string Join(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

} // namespace

Manager::Manager(const Configuration& configuration, const Limits& limits, Control& control)
    : configuration_(configuration), limits_(limits), control_(control)
{}

bool Manager::Run(const std::vector<std::string>& names)
{
    Start(names);
    while (true) {
        const auto complete = [this](const StartPointer& request) { return HandOutStarts(request); };
        starts_.erase(std::remove_if(starts_.begin(), starts_.end(), complete), starts_.end());
        HandOutStops();
        if (ending_ && !stop_) {
            return !failed_;
        }
        // A stop is brought to its end before the next order is heard; only a signal interrupts it.
        const int orders = stop_ ? -1 : control_.Orders();
        switch (FirstReadable({control_.Signals(), progress_.Get(), orders}, kForever)) {
        case 0:
            End();
            break;
        case 1:
            progress_.Clear();
            break;
        default:
            Obey(control_.TakeOrder());
        }
    }
}

void Manager::Obey(const Control::Command& command)
{
    if (command.order == Control::START) {
        Start(command.names);
    }
    if (command.order != Control::STOP) {
        return;
    }
    std::vector<std::string> known;
    for (const auto& [name, application] : applications_) {
        known.push_back(name);
    }
    std::vector<std::string> names;
    for (const std::string& name : command.names) {
        if (applications_.count(name) != 0) {
            names.push_back(name);
            continue;
        }
        LogWarning(name, "cannot be stopped: it was never started");
    }
    const std::vector<std::string> dependants = configuration_.Dependants(names, known);
    names.insert(names.end(), dependants.begin(), dependants.end());
    Stop(names);
}

void Manager::End()
{
    LogInfo("", control_.TakeSignal() + ": stops everything");
    failed_ = failed_ || !starts_.empty();
    ending_ = true;
    std::vector<std::string> names;
    for (const auto& [name, application] : applications_) {
        names.push_back(name);
    }
    Stop(names);
}

Application& Manager::Get(const std::string& name)
{
    return applications_.try_emplace(name, name, *configuration_.Find(name), limits_).first->second;
}

// Starts the applications and all that they need. What runs already is popped as soon as it is handed out.
void Manager::Start(const std::vector<std::string>& requested)
{
    std::vector<std::string> names;
    for (const std::string& name : requested) {
        if (configuration_.Find(name) != nullptr) {
            names.push_back(name);
            continue;
        }
        LogError(name,
                 "cannot be started: it is not configured, or it is a pattern and not one of its members");
        failed_ = true;
    }
    // A graph reaches one level beyond its request. Asking for everything that is needed makes it whole.
    const auto request = std::make_shared<StartRequest>();
    request->names = configuration_.WithNeeded(names);
    if (configuration_.StartGraph(request->names, request->graph) != 0) {
        LogError("", "cannot start " + Join(requested) + ": the system log says why");
        failed_ = true;
        return;
    }
    starts_.push_back(request);
}

// Begins whatever can begin now; true when the request is complete.
bool Manager::HandOutStarts(const StartPointer& request)
{
    if (request->graph.IsEmpty()) {
        LogInfo("", "started: " + Join(request->names));
        return true;
    }
    for (const std::string& name : request->graph.GetNoDependVertices()) {
        // Not every vertex is one of the request: the graph also holds the families that are needed, and
        // what was dropped from the configuration.
        if (ParseAndDepend().IsDynamicPara(name)) {
            StartFamily(request, name);
            continue;
        }
        if (configuration_.Find(name) == nullptr) {
            LogError(name, "is needed but not configured");
            ReportWaiting(*request, name);
            continue;
        }
        Application& application = Get(name);
        application.WhenStarted([this, request, name](bool started) {
            if (started) {
                request->graph.Pop(name);
                progress_.Signal();
                return;
            }
            ReportWaiting(*request, name);
        });
        application.Start();
    }
    return false;
}

// A family has started when those of its members have that are in the request or active already.
void Manager::StartFamily(const StartPointer& request, const std::string& family)
{
    std::set<std::string> members;
    for (const std::string& name : request->names) {
        if (configuration_.Find(name)->GetAppName() == family) {
            members.insert(name);
        }
    }
    for (const auto& [name, application] : applications_) {
        if (application.Entry().GetAppName() == family && application.IsActive()) {
            members.insert(name);
        }
    }
    if (members.empty()) {
        LogWarning(family, "is needed, but none of its members is started");
        request->graph.Pop(family);
        progress_.Signal();
    }
    const auto left = std::make_shared<std::atomic<std::size_t>>(members.size());
    for (const std::string& name : members) {
        Get(name).WhenStarted([this, request, family, left](bool started) {
            if (started && --*left == 0) {
                request->graph.Pop(family);
                progress_.Signal();
            }
        });
    }
}

void Manager::ReportWaiting(const StartRequest& request, const std::string& name) const
{
    const std::vector<std::string> waiting = configuration_.Dependants({name}, request.names);
    LogError(name, "has failed to start; " +
                       (waiting.empty() ? "nothing waits for it" : "waiting for it: " + Join(waiting)));
}

// Begins to stop `names`, which hold all that depends on any of them.
void Manager::Stop(const std::vector<std::string>& names)
{
    for (const StartPointer& request : starts_) {
        LogInfo("", "gives up what is not complete: the start of " + Join(request->names));
    }
    starts_.clear();
    stop_ = std::make_shared<StopRequest>();
    if (configuration_.StopGraph(names, stop_->graph) != 0) {
        LogError("", "there is no order in which to stop " + Join(names) + ": they are stopped at once");
        std::map<std::string, std::set<std::string>> unordered;
        for (const std::string& name : names) {
            unordered[name];
        }
        stop_->graph.Update(unordered);
    }
}

// Begins whatever can be stopped now. The stop is at its end when all is popped, or when nothing is under way
// because what is left needs to outlive a program that does not end.
void Manager::HandOutStops()
{
    if (!stop_) {
        return;
    }
    const bool idle = stop_->underWay == 0; // asked first: what is popped later shows in the set
    const std::set<std::string> names = stop_->graph.GetNoDependVertices();
    for (const std::string& name : names) {
        ++stop_->underWay;
        Get(name).Stop([this, stop = stop_, name](bool stopped) {
            if (stopped) {
                stop->graph.Pop(name);
            }
            --stop->underWay;
            progress_.Signal();
        });
    }
    if (!stop_->graph.IsEmpty() && !(idle && names.empty())) {
        return;
    }
    std::vector<std::string> left;
    for (const auto& [name, application] : applications_) {
        if (application.IsActive()) {
            left.push_back(name);
        }
    }
    const bool everything = stop_->graph.IsEmpty();
    failed_ = failed_ || !everything;
    everything ? LogInfo("", "stopped")
               : LogError("", "not everything could be stopped; left running: " + Join(left));
    stop_.reset();
}
