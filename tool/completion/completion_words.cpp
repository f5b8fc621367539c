#include "tool/completion/completion_words.h"

#include <algorithm>
#include <cstddef>

#include "tool/command_line/command_line.h"
#include "tool/completion/completion_shapes.h"
#include "tool/configuration/configuration.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

// A line that is still being written.
class UnfinishedLine {
public:
    // Throws UsageFailure for a line that cannot be made a right one by writing on.
    explicit UnfinishedLine(const std::vector<std::string>& words)
    {
        std::vector<const char*> arguments = {"startplan"};
        for (const std::string& word : words) {
            arguments.push_back(word.c_str());
        }
        line_.Parse(static_cast<int>(arguments.size()), arguments.data());
        if (line_.HelpText().empty()) {
            PlaceWords();
        }
    }

    const ArgumentShape& Next() const { return next_; }

    // Names that a list of lines cannot hold are left out, and so is everything when the files are wrong.
    std::vector<std::string> Applications() const
    {
        std::vector<std::string> names;
        if (top_.empty()) {
            return names;
        }
        const Configuration configuration = LoadConfiguration(RequestFor(line_.Options(), top_));
        for (const auto& [name, app] : configuration.appByName) {
            if (Printable(name) == name) {
                names.push_back(name);
            }
        }
        return names;
    }

private:
    void PlaceWords()
    {
        top_ = line_.Options().configuration;
        const bool hasTop = !top_.empty();
        const std::vector<std::string>& words = line_.Words();
        std::size_t placed = 0;
        for (const ArgumentShape& argument : ArgumentShapes(line_.Info().arguments)) {
            if (argument.isTop && hasTop) {
                continue;
            }
            if (placed == words.size() || argument.isRepeated) {
                next_ = argument;
                return;
            }
            if (argument.isTop) {
                top_ = words[placed];
            }
            ++placed;
        }
    }

    CommandLine line_;
    std::string top_;
    ArgumentShape next_;
};

} // namespace

std::optional<std::vector<std::string>> NextWords(const std::vector<std::string>& words)
{
    try {
        const UnfinishedLine line(words);
        switch (line.Next().kind) {
        case WordKind::FILE:
        case WordKind::FOLDER:
            return std::nullopt;
        case WordKind::APPLICATION:
            return line.Applications();
        default:
            return line.Next().choices;
        }
    } catch (const Failure&) {
        return std::vector<std::string>();
    }
}

std::vector<std::string> ApplicationsOf(const std::vector<std::string>& words)
{
    for (std::size_t size = words.size(); size > 0 && size + 1 >= words.size(); --size) {
        try {
            return UnfinishedLine({words.begin(), words.begin() + static_cast<std::ptrdiff_t>(size)})
                .Applications();
        } catch (const Failure&) {
            continue;
        }
    }
    return {};
}

} // namespace tool
