#ifndef STARTPLAN_TOOL_COMMAND_LINE_SESSION_H
#define STARTPLAN_TOOL_COMMAND_LINE_SESSION_H

#include <cstddef>
#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

#include "tool/command_line/options.h"
#include "tool/library/log_collector.h"
#include "tool/text/output.h"

namespace tool {

// Keeps the order in which members are added, so that output is the same from run to run.
using Json = nlohmann::ordered_json;

enum class Color { BOLD, RED, YELLOW, GREEN, DIM };

// One run of the command: its options, and where results and remarks go.
class Session {
public:
    explicit Session(const CommonOptions& options);

    const CommonOptions& Options() const { return options_; }
    bool IsJson() const { return options_.format == "json"; }

    // The result, held back until the command is done.
    void Print(std::string_view text) { output_.Add(text); }
    void PrintJson(const Json& json);
    void Commit() { output_.Commit(); }

    // Remarks, at once and on standard error: "startplan: warning: ...". Not with -q, but for errors.
    void Error(std::string_view text) const;
    void Warn(std::string_view text) const;
    void Note(std::string_view text) const;
    // The library's lines, with -v.
    void Show(const LogLines& lines) const;

    // The text in a colour where the result goes to a terminal.
    std::string In(Color color, std::string_view text) const;
    // The columns of the terminal that the result goes to; 0 for no terminal.
    std::size_t Width() const { return width_; }

private:
    const CommonOptions& options_;
    Output output_;
    bool hasColor_ = false;
    std::size_t width_ = 0;
};

// A fresh JSON document of a command, with its version: {"format": "startplan-list", "version": 1}.
Json JsonDocument(std::string_view command);

} // namespace tool

#endif
