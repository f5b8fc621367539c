#include "manager.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <future>
#include <mutex>
#include <set>

#include "log.h"

namespace {

using namespace std::chrono_literals;

template <typename Texts>
std::string Join(const Texts& texts)
{
    std::string all;
    for (const std::string& text : texts) {
        all.append(all.empty() ? "" : ", ").append(text);
    }
    return all;
}

// Works off a graph: each vertex that is handed out gets a thread of its own, which pops it once `work` has
// succeeded, so that as much is under way at once as the graph allows. Returns when nothing is under way and
// nothing more is handed out, with those of `names` that were not popped.
std::set<std::string> WorkOff(DependGraph& graph, const Names& names,
                              const std::function<bool(const std::string&)>& work)
{
    std::set<std::string> left(names.begin(), names.end());
    std::size_t underWay = 0;
    std::condition_variable progress;
    std::mutex mutex; // free only while this thread waits: no pop is missed between asking and waiting
    const auto workAndPop = [&](const std::string& name) {
        bool succeeded = false;
        try {
            succeeded = work(name);
        } catch (const std::exception& error) { // no more threads, for example
            Log("error", name, error.what());
        }
        const std::lock_guard<std::mutex> lock(mutex);
        if (succeeded) {
            graph.Pop(name);
            left.erase(name);
        }
        --underWay;
        progress.notify_one();
    };
    std::vector<std::future<void>> threads; // each waits for its thread when it is destroyed
    std::unique_lock<std::mutex> lock(mutex);
    while (true) {
        for (const std::string& name : graph.GetNoDependVertices()) {
            threads.push_back(std::async(std::launch::async, workAndPop, name));
            ++underWay;
        }
        if (underWay == 0) {
            return left;
        }
        progress.wait(lock);
        // A fork() costs time for each thread that there is, finished ones included.
        const auto isOver = [](const auto& thread) {
            return thread.wait_for(0s) == std::future_status::ready;
        };
        threads.erase(std::remove_if(threads.begin(), threads.end(), isOver), threads.end());
    }
}

} // namespace

// A start graph reaches one level beyond its request. Asking for everything that is needed makes it whole.
Manager::Manager(const Configuration& configuration, const Names& names)
    : configuration_(configuration), names_(configuration.WithNeeded(names))
{
    for (const std::string& name : names_) {
        applications_.try_emplace(name, name, *configuration.Find(name));
    }
}

bool Manager::Start()
{
    DependGraph graph;
    DependGraph stopGraph; // tells of a cycle that leads through a family, which the other one does not see
    if (!configuration_.StartGraph(names_, graph) || !configuration_.StopGraph(names_, stopGraph)) {
        Log("error", "", "cannot start " + Join(names_) + ": the system log says why");
        return false;
    }
    if (!WorkOff(graph, names_, [this](const std::string& name) { return StartVertex(name); }).empty()) {
        return false;
    }
    Log("info", "", "started: " + Join(names_));
    return true;
}

// Starts an application, or waits for the members of a family, which are vertices themselves.
bool Manager::StartVertex(const std::string& vertex)
{
    const auto application = applications_.find(vertex);
    if (application != applications_.end()) {
        application->second.Start();
        return application->second.WaitForStart([&] { ReportWaiting(vertex); });
    }
    if (!configuration_.IsFamily(vertex)) { // dropped when the configuration was read
        ReportWaiting(vertex);
        return false;
    }
    for (auto& [name, member] : applications_) {
        if (member.Entry().GetAppName() == vertex && !member.WaitForStart([] {})) {
            return false;
        }
    }
    return true;
}

void Manager::ReportWaiting(const std::string& name) const
{
    Names waiting = configuration_.WithDependants({name}, names_);
    waiting.erase(std::find(waiting.begin(), waiting.end(), name));
    Log("error", name, "has not started; waiting for it: " + (waiting.empty() ? "nothing" : Join(waiting)));
}

bool Manager::Stop(const Names& names)
{
    Names known;
    for (const std::string& name : names) {
        if (applications_.count(name) != 0) {
            known.push_back(name);
            continue;
        }
        Log("warning", name, "cannot be stopped: it was never started");
    }
    Names begun;
    for (const std::string& name : configuration_.WithDependants(known, names_)) {
        if (applications_.at(name).Retire()) {
            begun.push_back(name);
        }
    }
    DependGraph graph;
    configuration_.StopGraph(begun, graph); // no cycle: each has begun after what it needs
    const auto left =
        WorkOff(graph, begun, [this](const std::string& name) { return applications_.at(name).Stop(); });
    if (left.empty()) {
        Log("info", "", "stopped: " + Join(begun));
        return true;
    }
    Log("error", "", "not stopped: " + Join(left));
    return false;
}
