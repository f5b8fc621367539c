#ifndef STARTPLAN_EXAMPLES_PROCESS_MANAGER_CONTROL_H
#define STARTPLAN_EXAMPLES_PROCESS_MANAGER_CONTROL_H

#include <string>
#include <vector>

#include "descriptor.h"

// Where the manager is told what to do while it runs: by SIGTERM and SIGINT, which end it, and by the lines
// of a named pipe:
//
//     start NAME...
//     stop NAME...
class Control {
public:
    enum Order { NOTHING, START, STOP };
    struct Command {
        Order order = NOTHING;
        std::vector<std::string> names;
    };

    // Makes the pipe, for the manager's own user, unless there is one; no pipe where the path is empty.
    // To be called before there are threads, which inherit that the signals are blocked. Throws
    // std::system_error.
    explicit Control(const std::string& pipePath);

    int Signals() const { return signals_.Get(); }
    int Orders() const { return orders_.Get(); }

    // The two below are to be called when the descriptor above it is readable.
    std::string TakeSignal() const;
    // NOTHING where no whole line has come yet, or one that is no order; it is logged.
    Command TakeOrder();

private:
    Descriptor signals_;
    Descriptor orders_;
    std::string line_; // what has come of it so far
};

#endif
