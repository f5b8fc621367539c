// A program for the process manager to run. It writes what it does to a trace, one line each, in one piece,
// so that the order of the lines is the order of the deeds of all programs that share the trace:
//
//     traced_program TRACE [ACTION...]
//
// It writes "start NAME PID", with the name from APP_NAME, carries out the actions in their order, and then
// waits for SIGTERM, at which it writes "stop NAME" and exits with status 0.
//
//     sleep=MS         waits
//     ready            writes "ready NAME" and reports readiness
//     close            closes READY_FD
//     exit=STATUS      exits
//     kill=NUMBER      kills itself by this signal
//     until=COUNT      ends the actions here at the COUNTth start and later ones
//     ignore-term      ignores SIGTERM
//     slow-stop=MS     waits that long at SIGTERM before it writes "stop NAME"
//     describe         writes what it was given, a line "NAME KEY VALUE" each
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

namespace {

std::string name;
const char* tracePath;

void Trace(const std::string& text)
{
    const std::string line = text + "\n";
    const int fd = open(tracePath, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (write(fd, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
        _exit(99);
    }
    close(fd);
}

void Sleep(int milliseconds)
{
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1000000};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

int CountStarts()
{
    std::ifstream trace(tracePath);
    const std::string begin = "start " + name + " ";
    int count = 0;
    for (std::string line; std::getline(trace, line);) {
        count += line.compare(0, begin.size(), begin) == 0 ? 1 : 0;
    }
    return count;
}

void Describe(int argc, char** argv)
{
    for (int i = 0; i < argc; ++i) {
        Trace(name + " argument " + argv[i]);
    }
    for (char** variable = environ; *variable != nullptr; ++variable) {
        Trace(name + " variable " + *variable);
    }
    Trace(name + " uid " + std::to_string(getuid()) + " " + std::to_string(geteuid()));
    Trace(name + " gid " + std::to_string(getgid()) + " " + std::to_string(getegid()));
    Trace(name + " groups " + std::to_string(getgroups(0, nullptr)));
    Trace(name + " nice " + std::to_string(getpriority(PRIO_PROCESS, 0)));
    Trace(name + " policy " + std::to_string(sched_getscheduler(0)));
    cpu_set_t cores;
    sched_getaffinity(0, sizeof cores, &cores);
    Trace(name + " cores " + std::to_string(CPU_COUNT(&cores)) + (CPU_ISSET(0, &cores) ? " with 0" : ""));
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    Trace(name + " descriptors " + std::to_string(limit.rlim_cur));
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    struct sigaction pipeAction {};
    sigaction(SIGPIPE, nullptr, &pipeAction);
    const bool clean =
        sigismember(&blocked, SIGINT) == 0 && pipeAction.sa_handler == SIG_DFL; // SIGTERM is blocked below
    Trace(name + " signals " + (clean ? "clean" : "altered"));
}

} // namespace

int main(int argc, char** argv)
{
    sigset_t term;
    sigemptyset(&term);
    sigaddset(&term, SIGTERM);
    sigprocmask(SIG_BLOCK, &term, nullptr);
    name = std::getenv("APP_NAME");
    tracePath = argv[1];
    Trace("start " + name + " " + std::to_string(getpid()));

    int stopDelay = 0;
    bool ignoresTerm = false;
    for (int i = 2; i < argc; ++i) {
        const std::string action = argv[i];
        const std::size_t equals = action.find('=');
        const int value = equals == std::string::npos ? 0 : std::atoi(action.c_str() + equals + 1);
        const std::string verb = action.substr(0, equals);
        if (verb == "until" && CountStarts() >= value) {
            break;
        }
        if (verb == "sleep") {
            Sleep(value);
        }
        if (verb == "ready") {
            Trace("ready " + name);
            if (dprintf(std::atoi(std::getenv("READY_FD")), "READY\n") != 6) {
                return 98;
            }
        }
        if (verb == "close") {
            close(std::atoi(std::getenv("READY_FD")));
        }
        if (verb == "exit") {
            return value;
        }
        if (verb == "kill") {
            kill(getpid(), value);
        }
        if (verb == "describe") {
            Describe(argc, argv);
        }
        stopDelay = verb == "slow-stop" ? value : stopDelay;
        ignoresTerm = ignoresTerm || verb == "ignore-term";
    }
    int received = 0;
    do {
        sigwait(&term, &received);
    } while (ignoresTerm);
    Sleep(stopDelay);
    Trace("stop " + name);
    return 0;
}
