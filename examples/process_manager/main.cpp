// A process manager: starts the programs of a startup configuration in the order of their dependencies,
// supervises them, and stops them in reverse order. What it asks of the library is all in configuration.cpp
// and manager.cpp; docs/tour.md walks through these calls.
//
// Read in this order: main.cpp, configuration.h, manager.cpp, application.cpp, launch.cpp.
#include <csignal>
#include <exception>
#include <future>
#include <iostream>
#include <iterator>
#include <sstream>
#include <utility>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "configuration.h"
#include "launch.h"
#include "log.h"
#include "manager.h"

namespace {

enum ExitStatus { DONE = 0, NOT_ALL_DONE = 1, CANNOT_WORK = 2 };

constexpr const char* kUsage =
    R"(usage: process_manager TOP [--replace FILE] --all
       process_manager TOP [--replace FILE] --start NAME...

Starts every application of the configuration at TOP that is no pattern, or those that are named, which may be
members of patterns, and all that they need. SIGTERM or SIGINT stops everything; a line "stop NAME..." on
standard input stops these applications and what needs them. FILE holds replace data.

Exit status: 0 all was started and all was stopped, 1 something was not, 2 the work could not begin.
)";

// A descriptor that is readable once SIGTERM or SIGINT has come. Threads inherit that these are blocked.
int PrepareSignals()
{
    for (const int signal : {SIGTERM, SIGINT, SIGCHLD}) {
        std::signal(signal, SIG_DFL); // ignored ones never come, and ended programs could not be waited for
    }
    std::signal(SIGPIPE, SIG_IGN); // a log that nobody reads any more
    std::signal(SIGTTIN, SIG_IGN); // a terminal that belongs to another job: there is no input then
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    sigprocmask(SIG_BLOCK, &ends, nullptr);
    return signalfd(-1, &ends, SFD_CLOEXEC);
}

// Obeys the lines of standard input until a signal is there; each is carried out to its end before anything else
// is noticed. The end of the input only ends the lines.
void Obey(Manager& manager, int signals)
{
    std::string line;
    pollfd events[] = {{signals, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
    while (events[0].revents == 0) {
        char next = 0;
        if (poll(events, 2, -1) < 0 || events[1].revents == 0) {
            continue;
        }
        if (read(STDIN_FILENO, &next, 1) != 1) {
            events[1].fd = -1; // poll() passes over it
            continue;
        }
        if (next != '\n') {
            line += next;
            continue;
        }
        std::istringstream words(std::exchange(line, ""));
        std::string verb;
        words >> verb;
        const Names names{std::istream_iterator<std::string>(words), {}};
        if (verb == "stop") {
            manager.Stop(names);
            continue;
        }
        Log("warning", "", "a request is \"stop NAME...\", not \"" + words.str() + "\"");
    }
}

ExitStatus Run(const std::string& top, const std::string& replace, const Names& requested)
{
    PrepareToLaunch();
    const int signals = PrepareSignals();
    Configuration configuration;
    if (!configuration.Load(top, replace)) {
        return CANNOT_WORK;
    }
    Names names;
    for (const std::string& name : requested.empty() ? configuration.All() : requested) {
        if (configuration.Find(name) != nullptr) {
            names.push_back(name);
            continue;
        }
        Log("error", name,
            "cannot be started: it is not configured, or a pattern and not one of its members");
    }
    const bool allKnown = names.size() >= requested.size();

    Manager manager(configuration, names);
    std::future<bool> start = std::async(std::launch::async, &Manager::Start, &manager);
    Obey(manager, signals);
    Log("info", "", "stops everything");
    if (!manager.Stop(manager.Applications())) {
        _exit(NOT_ALL_DONE); // there are threads that wait for what is left running
    }
    return start.get() && allKnown ? DONE : NOT_ALL_DONE;
}

} // namespace

int main(int argc, char** argv)
{
    Names arguments(argv + 1, argv + argc);
    std::string replace;
    if (arguments.size() > 2 && arguments[1] == "--replace") {
        replace = arguments[2];
        arguments.erase(arguments.begin() + 1, arguments.begin() + 3);
    }
    const bool all = arguments.size() == 2 && arguments[1] == "--all";
    if (!all && (arguments.size() < 3 || arguments[1] != "--start")) {
        std::cerr << kUsage;
        return CANNOT_WORK;
    }
    try {
        return Run(arguments[0], replace, {arguments.begin() + 2, arguments.end()});
    } catch (const std::exception& error) {
        Log("error", "", error.what());
        return CANNOT_WORK;
    }
}
