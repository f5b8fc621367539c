#include "launch.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <map>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "log.h"

namespace {

// One digit, because a POSIX shell can redirect to no other descriptor: echo READY >&"$READY_FD".
constexpr int kReadyFd = 3;

int nullFd = -1;      // both are written once,
rlimit programsLimit; // before there are threads

// What a child needs and cannot make for itself: between fork() and exec() it must neither allocate nor call
// what could lock, because other threads of the manager may have held any lock at the moment of the fork().
struct Plan {
    const ApplicationManifest& entry;
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    std::string realTimeType;
    Descriptor status; // takes Reports; closed by a successful exec()
    Descriptor ready;  // becomes kReadyFd
};

// What a child could not do. The texts lie at the same place in the manager, of which the child is a copy.
struct Report {
    const char* what;
    const char* which;
    int error;
    bool isFatal;
};

void Tell(const Plan& plan, const char* what, const char* which = "", bool isFatal = false)
{
    const Report report{what, which, errno, isFatal};
    [[maybe_unused]] const ssize_t written = write(plan.status.Get(), &report, sizeof report);
    if (isFatal) {
        _exit(127);
    }
}

// In the child: what the system may refuse, and the program runs all the same.
void SetScheduling(const Plan& plan)
{
    for (const auto& [controller, path] : plan.entry.GetCGroupPath()) {
        const int group = open(path.c_str(), O_PATH | O_CLOEXEC);
        const int procs = group < 0 ? -1 : openat(group, "cgroup.procs", O_WRONLY | O_CLOEXEC);
        if (procs < 0 || write(procs, "0", 1) != 1) { // 0 stands for the process that writes
            Tell(plan, "cannot join the control group ", path.c_str());
        }
    }
    const std::vector<std::uint32_t>& affinity = plan.entry.GetCoreAffinity();
    cpu_set_t cores;
    CPU_ZERO(&cores);
    for (const std::uint32_t core : affinity) {
        if (core < CPU_SETSIZE) {
            CPU_SET(core, &cores);
        }
    }
    if (!affinity.empty() && sched_setaffinity(0, sizeof cores, &cores) != 0) {
        Tell(plan, "cannot set the core affinity");
    }
    if (plan.entry.GetNice() != 0 && setpriority(PRIO_PROCESS, 0, plan.entry.GetNice()) != 0) {
        Tell(plan, "cannot set the nice value");
    }
    const std::string& type = plan.realTimeType;
    const int policy = type == "fifo" ? SCHED_FIFO : type == "rr" ? SCHED_RR : -1; // -1 is refused
    const sched_param lowest{sched_get_priority_min(SCHED_FIFO)};
    if (plan.entry.GetIsSetRtPrio() && sched_setscheduler(0, policy, &lowest) != 0) {
        Tell(plan, "cannot set the real-time policy ", type.c_str());
    }
}

// In the child: does what the entry says and becomes the program.
void BecomeProgram(const Plan& plan, char* const argv[], char* const envp[])
{
    // So Ctrl-C in the manager's terminal reaches the manager alone, which then stops the programs in their
    // order, and a forced stop can kill all that the program has left behind.
    setsid();
    SetScheduling(plan);
    const ApplicationManifest& entry = plan.entry;
    if (geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(entry.GetGid()) != 0 || setuid(entry.GetUid()) != 0)) {
        Tell(plan, "cannot change the user and group", "", true);
    }
    dup2(nullFd, STDIN_FILENO);
    if (plan.ready.Get() >= 0) {
        dup2(plan.ready.Get(), kReadyFd);
    }
    setrlimit(RLIMIT_NOFILE, &programsLimit);
    for (int signal = 1; signal < NSIG; ++signal) {
        std::signal(signal, SIG_DFL); // the manager ignores some and blocks others
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execve(argv[0], argv, envp);
    Tell(plan, "cannot execute ", argv[0], true);
}

std::vector<std::string> Environment(const std::string& name, const ApplicationManifest& entry)
{
    std::map<std::string, std::string> variables = entry.GetEnvArgv();
    variables["APP_NAME"] = name;
    if (entry.GetIsReporting()) {
        variables["READY_FD"] = std::to_string(kReadyFd);
    }
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        const std::size_t equals = text.find('=');
        variables.emplace(text.substr(0, equals), equals == std::string::npos ? "" : text.substr(equals + 1));
    }
    std::vector<std::string> environment;
    for (const auto& [variable, value] : variables) {
        environment.emplace_back(variable).append("=").append(value);
    }
    return environment;
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers(texts.size() + 1); // the last one stays null
    std::transform(texts.begin(), texts.end(), pointers.begin(),
                   [](std::string& text) { return text.data(); });
    return pointers;
}

bool MakePipe(Descriptor& readEnd, Descriptor& writeEnd)
{
    int ends[2] = {-1, -1};
    const bool made = pipe2(ends, O_CLOEXEC) == 0;
    readEnd = Descriptor(ends[0]);
    writeEnd = Descriptor(ends[1]);
    return made;
}

// Logs what the child tells until it has become the program or is gone. False where it is gone.
bool HearOf(const std::string& name, const Descriptor& status)
{
    Report report{};
    for (ssize_t got = 1; got > 0 || (got < 0 && errno == EINTR);) {
        got = read(status.Get(), &report, sizeof report);
        if (got > 0) {
            const std::string text = std::string(report.what) + report.which;
            Log(report.isFatal ? "error" : "warning", name,
                std::system_error(report.error, std::generic_category(), text).what());
        }
    }
    return !report.isFatal;
}

} // namespace

void PrepareToLaunch()
{
    do { // takes the numbers up to kReadyFd for good, so that no pipe of the manager's gets one of them
        nullFd = open("/dev/null", O_RDWR);
    } while (nullFd >= 0 && nullFd <= kReadyFd);
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int fd = std::stoi(entry.path().filename());
        if (fd > STDERR_FILENO) {
            fcntl(fd, F_SETFD, FD_CLOEXEC);
        }
    }
    getrlimit(RLIMIT_NOFILE, &programsLimit);
    rlimit raised = programsLimit;
    raised.rlim_cur = raised.rlim_max;
    setrlimit(RLIMIT_NOFILE, &raised);
}

pid_t Launch(const std::string& name, const ApplicationManifest& entry, Descriptor& ready)
{
    if (geteuid() != 0 && (entry.GetUid() != geteuid() || entry.GetGid() != getegid())) {
        Log("warning", name, "runs as the manager's user and group: only root can change to others");
    }
    Plan plan{entry, entry.GetArguments(), Environment(name, entry), entry.GetSetRtType(), {}, {}};
    plan.arguments.insert(plan.arguments.begin(), entry.GetBinPath());
    const std::vector<char*> argv = Pointers(plan.arguments);
    const std::vector<char*> envp = Pointers(plan.environment);
    Descriptor status;
    const bool hasPipes =
        MakePipe(status, plan.status) && (!entry.GetIsReporting() || MakePipe(ready, plan.ready));
    const pid_t process = hasPipes ? fork() : -1;
    if (process == 0) {
        BecomeProgram(plan, argv.data(), envp.data());
    }
    if (process < 0) {
        Log("error", name, std::system_error(errno, std::generic_category(), "cannot be launched").what());
        return -1;
    }
    plan.status = Descriptor();
    if (HearOf(name, status)) {
        return process;
    }
    waitpid(process, nullptr, 0);
    return -1;
}
