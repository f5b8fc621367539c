#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include "tool/command.h"
#include "tool/file_schema.h"
#include "tool/key_page.h"
#include "tool/suggest.h"

namespace tool {

namespace {

struct NamedKind {
    const char* name;
    FileKind kind;
};

constexpr NamedKind kKinds[] = {
    {"startup", FileKind::STARTUP}, {"top", FileKind::TOP_LEVEL}, {"replace", FileKind::REPLACE}};

// The first one without a word.
FileKind TakeFileKind(std::vector<std::string>& words)
{
    if (words.empty()) {
        return kKinds[0].kind;
    }
    const std::string word = words.front();
    words.erase(words.begin());
    std::vector<std::string> names;
    for (const NamedKind& known : kKinds) {
        if (word == known.name) {
            return known.kind;
        }
        names.emplace_back(known.name);
    }
    throw UsageFailure(fmt::format("no schema \"{}\" (there is {}){}", word, fmt::join(names, ", "),
                                   DidYouMean(word, names)));
}

class SchemaCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const FileKind kind = TakeFileKind(words);
        RefuseWords(words);
        if (session.Options().format == "markdown") {
            session.Print(KeyTable(kind));
            session.Print(kind == FileKind::STARTUP ? "\n" + OutcomeTable() : "");
            return EXIT_DONE;
        }
        session.PrintJson(FileSchema(kind));
        return EXIT_DONE;
    }
};

constexpr char kHelp[] =
    "The JSON Schema (draft-07) of one kind of file: \"startup\" (applications; the default), \"top\"\n"
    "(top-level and sub-startup files) or \"replace\" (values of placeholders). Editors that know YAML "
    "check\n"
    "and complete a file by it while it is written, when its first line says where the schema lies:\n\n"
    "    # yaml-language-server: $schema=startup.schema.json\n\n"
    "Unknown keys are refused; keys that begin with \"x-\" are yours. \"check\" finds more than a schema "
    "can.\n"
    "With --format markdown: the same keys as tables.\n\n"
    "Exit status: 0 done, 2 the work could not be done.\n"
    "Example: startplan schema startup -o startup.schema.json";

const CommandEntry kEntry({"schema",
                           "[startup|top|replace]",
                           "A JSON Schema, by which an editor checks and completes",
                           kHelp,
                           Section::ABOUT,
                           {"json", "markdown"},
                           []() -> std::unique_ptr<Command> { return std::make_unique<SchemaCommand>(); }});

} // namespace

} // namespace tool
