#ifndef STARTPLAN_TOOL_LIBRARY_LOG_COLLECTOR_H
#define STARTPLAN_TOOL_LIBRARY_LOG_COLLECTOR_H

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// One call of syslog().
struct LogLine {
    int priority = 0;
    std::string_view format; // the library's own text, which lives as long as the program
    std::string text;        // formatted; left empty for LOG_INFO and LOG_DEBUG lines unless asked for
    // Each argument formatted by itself, so that a name can be told from the words around it. Left empty
    // for LOG_INFO and LOG_DEBUG lines: there are many and nobody takes them apart.
    std::vector<std::string> arguments;
};

using LogLines = std::vector<LogLine>;

// Collects what the library logs while the object lives. The command defines syslog() itself, so no line
// reaches the system's log. Of nested collectors the innermost gets the lines; without any they are lost.
class LogCollector {
public:
    // `wantsInfoText`: whether progress lines are formatted, too. Several for each application, they would
    // cost a good part of the time that the library itself needs.
    explicit LogCollector(bool wantsInfoText = false);
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;
    ~LogCollector();

    // The lines since the last call, in order.
    LogLines Take();

    bool WantsInfoText() const { return wantsInfoText_; }
    void Add(LogLine line) { lines_.push_back(std::move(line)); }

private:
    LogCollector* outer_;
    bool wantsInfoText_;
    LogLines lines_;
};

// "LOG_ERR" and so on.
std::string_view PriorityName(int priority);

} // namespace tool

#endif
