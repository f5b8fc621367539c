#ifndef STARTPLAN_TOOL_TEXT_FAILURE_H
#define STARTPLAN_TOOL_TEXT_FAILURE_H

#include <stdexcept>
#include <string>

namespace tool {

// What the command's exit status means, in every command.
enum ExitStatus : int {
    EXIT_DONE = 0,     // done, and nothing found
    EXIT_FINDINGS = 1, // done, and something is wrong with what was asked about
    EXIT_FAILED = 2,   // the work could not be done
};

// The work cannot be done: main() prints the text and exits with EXIT_FAILED.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The same for a wrong command line: main() points at the help, too.
class UsageFailure : public Failure {
public:
    using Failure::Failure;
};

} // namespace tool

#endif
