#include "launch.h"

#include <cerrno>
#include <csignal>
#include <map>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "child_setup.h"
#include "log.h"

namespace {

rlimit programsLimit; // written once, before there are threads

std::string ErrorText(int error)
{
    return std::generic_category().message(error);
}

std::vector<std::string> MakeEnvironment(const std::string& name, const ApplicationManifest& entry)
{
    std::map<std::string, std::string> variables = entry.GetEnvArgv();
    variables["APP_NAME"] = name;
    if (entry.GetIsReporting()) {
        variables["READY_FD"] = std::to_string(kReadyFd);
    }
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos) {
            variables.emplace(text.substr(0, equals), text.substr(equals + 1)); // the entry's value stays
        }
    }
    std::vector<std::string> environment;
    for (const auto& [variable, value] : variables) {
        environment.push_back(variable + "=" + value);
    }
    return environment;
}

void SetOwner(const std::string& name, const ApplicationManifest& entry, ChildSetup& setup)
{
    setup.changeOwner = geteuid() == 0;
    setup.uid = entry.GetUid();
    setup.gid = entry.GetGid();
    if (!setup.changeOwner && (setup.uid != getuid() || setup.gid != getgid())) {
        LogWarning(name, "runs as the manager's user and group: only root can change to uid " +
                             std::to_string(setup.uid) + ", gid " + std::to_string(setup.gid));
    }
}

void SetScheduling(const std::string& name, const ApplicationManifest& entry, ChildSetup& setup)
{
    setup.nice = entry.GetNice();
    for (const std::uint32_t core : entry.GetCoreAffinity()) {
        setup.hasCores = true;
        if (core < CPU_SETSIZE) {
            CPU_SET(core, &setup.cores);
        }
    }
    if (entry.GetIsSetRtPrio()) {
        const std::string type = entry.GetSetRtType();
        setup.realTimePolicy = type == "fifo" ? SCHED_FIFO : type == "rr" ? SCHED_RR : SCHED_OTHER;
        if (setup.realTimePolicy == SCHED_OTHER) {
            LogWarning(name, "unknown set_rt_type \"" + type + "\": neither fifo nor rr");
        }
    }
    for (const auto& [controller, path] : entry.GetCGroupPath()) {
        Descriptor procs(open((path + "/cgroup.procs").c_str(), O_WRONLY | O_CLOEXEC));
        if (procs.Get() < 0) {
            LogWarning(name, "cannot join cgroup " + path + " (" + controller + "): " + ErrorText(errno));
            continue;
        }
        setup.cgroups.push_back(std::move(procs));
    }
}

// Reads what the child could not do until it has become the program or is gone. False where it is gone.
bool HearOf(const std::string& name, const std::string& path, int statusFd)
{
    bool runs = true;
    ChildReport report{};
    ssize_t got = 0;
    while ((got = read(statusFd, &report, sizeof report)) == sizeof report || (got < 0 && errno == EINTR)) {
        if (got < 0) {
            continue;
        }
        const char* what[] = {"cannot execute ",
                              "cannot change the user and group",
                              "cannot pass READY_FD",
                              "cannot set the nice value",
                              "cannot set the core affinity",
                              "cannot set the real-time policy",
                              "cannot join a cgroup"};
        const bool fatal = report.step <= ChildStep::DESCRIPTORS;
        const std::string text = what[static_cast<int>(report.step)] +
                                 (report.step == ChildStep::EXEC ? path : "") + ": " +
                                 ErrorText(report.error);
        fatal ? LogError(name, text) : LogWarning(name, text);
        runs = runs && !fatal;
    }
    return runs;
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::optional<Child> TryLaunch(const std::string& name, const ApplicationManifest& entry)
{
    ChildSetup setup;
    setup.arguments = entry.GetArguments();
    setup.arguments.insert(setup.arguments.begin(), entry.GetBinPath());
    setup.environment = MakeEnvironment(name, entry);
    setup.descriptorLimit = programsLimit;
    SetOwner(name, entry, setup);
    SetScheduling(name, entry, setup);
    Pipe status;
    setup.statusFd = status.write.Get();
    std::optional<Pipe> ready;
    if (entry.GetIsReporting()) {
        setup.readyFd = ready.emplace().write.Get();
    }
    const std::vector<char*> argv = Pointers(setup.arguments);
    const std::vector<char*> envp = Pointers(setup.environment);

    const pid_t pid = fork();
    if (pid == 0) {
        RunChild(setup, argv.data(), envp.data());
    }
    if (pid < 0) {
        LogError(name, "cannot fork: " + ErrorText(errno));
        return std::nullopt;
    }
    status.write = Descriptor();
    if (!HearOf(name, entry.GetBinPath(), status.read.Get())) {
        waitpid(pid, nullptr, 0);
        return std::nullopt;
    }
    try {
        return Child(pid, ready ? std::move(ready->read) : Descriptor());
    } catch (const std::system_error&) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        throw;
    }
}

} // namespace

// Nobody but the holder waits for the child, so its number cannot have been given away yet.
Child::Child(pid_t process, Descriptor readyPipe)
    : pid(process), exit(static_cast<int>(syscall(SYS_pidfd_open, process, 0))), ready(std::move(readyPipe))
{
    if (exit.Get() >= 0) {
        return;
    }
    // Before Linux 5.3, and under tools that do not know the call, a thread sees the end of the program, leaves
    // the waiting to Wait(), and lets go of the other end of a pipe.
    Pipe pipe;
    watcher = std::thread([process, end = std::move(pipe.write)] {
        siginfo_t info;
        while (waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
        }
    });
    exit = std::move(pipe.read);
}

Child::~Child()
{
    if (watcher.joinable()) {
        watcher.detach(); // the program is left to itself
    }
}

int Child::Wait()
{
    if (watcher.joinable()) {
        watcher.join();
    }
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

std::optional<Child> Launch(const std::string& name, const ApplicationManifest& entry)
{
    try {
        return TryLaunch(name, entry);
    } catch (const std::system_error& error) { // no descriptors or threads are left
        LogError(name, std::string("cannot be started: ") + error.what());
        return std::nullopt;
    }
}

void RaiseDescriptorLimit()
{
    getrlimit(RLIMIT_NOFILE, &programsLimit);
    rlimit raised = programsLimit;
    raised.rlim_cur = raised.rlim_max;
    setrlimit(RLIMIT_NOFILE, &raised);
}
