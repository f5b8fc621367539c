// A process manager: starts the programs of a startup configuration in the order of their dependencies,
// supervises them, and stops them in reverse order. What it asks of the library is all in configuration.cpp
// and manager.cpp; docs/tour.md walks through these calls.
//
// Read in this order: main.cpp, configuration.h, manager.cpp, application.cpp, launch.cpp, child_setup.cpp.
#include <exception>

#include "configuration.h"
#include "control.h"
#include "launch.h"
#include "log.h"
#include "manager.h"
#include "options.h"

namespace {

enum ExitStatus { DONE = 0, NOT_ALL_DONE = 1, CANNOT_WORK = 2 };

}

int main(int argc, char** argv)
{
    const std::optional<Options> options = ParseOptions(argc, argv);
    if (!options) {
        return CANNOT_WORK;
    }
    try {
        KeepDescriptorsOutOfPrograms();
        RaiseDescriptorLimit();
        Control control(options->controlPath);
        Configuration configuration;
        if (!configuration.Load(options->topPath, options->replacePath)) {
            return CANNOT_WORK;
        }
        Manager manager(configuration, options->limits, control);
        const bool done = manager.Run(options->all ? configuration.Names() : options->names);
        return done ? DONE : NOT_ALL_DONE;
    } catch (const std::exception& error) {
        LogError("", error.what());
        return CANNOT_WORK;
    }
}
