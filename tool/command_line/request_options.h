#ifndef STARTPLAN_TOOL_COMMAND_LINE_REQUEST_OPTIONS_H
#define STARTPLAN_TOOL_COMMAND_LINE_REQUEST_OPTIONS_H

#include <string>
#include <vector>

#include "tool/configuration/configuration.h"
#include "tool/plan/request_plan.h"

namespace CLI {
class App;
}

namespace tool {

// Which applications a request is for: the names on the command line or --all, and --closure.
class RequestOptions {
public:
    void Define(CLI::App& app);
    // Throws UsageFailure if there are both names and --all, or neither.
    void Check(const std::vector<std::string>& words) const;
    std::vector<std::string> Names(const Configuration& configuration, RequestKind kind,
                                   std::vector<std::string> words) const;

private:
    bool isAll_ = false;
    bool isClosure_ = false;
};

} // namespace tool

#endif
