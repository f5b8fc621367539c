#include <csignal>
#include <exception>
#include <new>
#include <string>

#include <fmt/format.h>
#include <unistd.h>

#include "tool/command_line/command.h"
#include "tool/command_line/command_line.h"
#include "tool/text/failure.h"
#include "tool/text/output.h"

namespace {

int Fail(const std::string& text)
{
    tool::WriteAll(STDERR_FILENO, fmt::format("startplan: error: {}\n", text));
    return tool::EXIT_FAILED;
}

int Run(int argc, const char* const* argv)
{
    tool::CommandLine line;
    line.Parse(argc, argv);
    tool::Session session(line.Options());
    if (!line.HelpText().empty()) {
        session.Print(line.HelpText());
        session.Commit();
        return line.HelpStatus();
    }
    try {
        const tool::ExitStatus status = line.TheCommand().Run(session, line.Words());
        session.Commit();
        return status;
    } catch (const tool::UsageFailure& failure) {
        line.FailAt(failure.what());
    }
}

} // namespace

int main(int argc, char** argv)
{
    // A reader that has gone shows as an error of write().
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return Run(argc, argv);
    } catch (const tool::ClosedPipe&) {
        return tool::EXIT_FAILED;
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
