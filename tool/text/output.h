#ifndef STARTPLAN_TOOL_TEXT_OUTPUT_H
#define STARTPLAN_TOOL_TEXT_OUTPUT_H

#include <string>
#include <string_view>

namespace tool {

// Where a command's result goes: standard output, or a file that is there whole or not at all. Everything
// is held back until Commit(), so a command that fails leaves nothing half done.
class Output {
public:
    // Empty `path` for standard output.
    explicit Output(std::string path) : path_(std::move(path)) {}

    void Add(std::string_view text) { text_ += text; }

    // Throws Failure if not everything could be written. ClosedPipe for a reader that has gone: nothing is
    // to be said about that.
    void Commit();

private:
    void WriteFile(const std::string& path) const;

    std::string path_;
    std::string text_;
};

// The reader of a pipe has had enough.
struct ClosedPipe {};

// Writes all of it to an open file. 0, or the errno of the failure.
int WriteAll(int descriptor, std::string_view text);

} // namespace tool

#endif
