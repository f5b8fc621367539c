#include "control.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iterator>
#include <sstream>
#include <system_error>

#include <fcntl.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "log.h"

Control::Control(const std::string& pipePath)
{
    // A signal that was ignored when the manager began would never arrive, and ended programs could not be
    // waited for.
    for (const int signal : {SIGTERM, SIGINT, SIGCHLD}) {
        std::signal(signal, SIG_DFL);
    }
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    sigprocmask(SIG_BLOCK, &ends, nullptr);
    signals_ = Descriptor(signalfd(-1, &ends, SFD_CLOEXEC));
    if (signals_.Get() < 0) {
        throw std::system_error(errno, std::generic_category(), "signalfd");
    }
    if (pipePath.empty()) {
        return;
    }
    if (mkfifo(pipePath.c_str(), 0600) != 0 && errno != EEXIST) {
        throw std::system_error(errno, std::generic_category(), pipePath);
    }
    // Open for writing too, so that the pipe is never at its end when a writer goes.
    orders_ = Descriptor(open(pipePath.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (orders_.Get() < 0) {
        throw std::system_error(errno, std::generic_category(), pipePath);
    }
}

std::string Control::TakeSignal() const
{
    signalfd_siginfo info{};
    [[maybe_unused]] const ssize_t got = read(signals_.Get(), &info, sizeof info);
    return info.ssi_signo == SIGINT ? "SIGINT" : "SIGTERM";
}

Control::Command Control::TakeOrder()
{
    char next = 0;
    // One byte at a time: what follows the line stays in the pipe, which remains readable.
    while (read(orders_.Get(), &next, 1) == 1 && next != '\n') {
        line_ += next;
    }
    if (next != '\n') {
        return {};
    }
    std::istringstream words(line_);
    line_.clear();
    std::string order;
    words >> order;
    Command command{order == "start"  ? START
                    : order == "stop" ? STOP
                                      : NOTHING,
                    {std::istream_iterator<std::string>(words), {}}};
    if (command.order == NOTHING || command.names.empty()) {
        LogWarning("", "an order is \"start NAME...\" or \"stop NAME...\", not \"" + words.str() + "\"");
        return {};
    }
    return command;
}
