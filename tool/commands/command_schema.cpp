#include <optional>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/keys/file_schema.h"
#include "tool/keys/key_page.h"
#include "tool/keys/output_schema.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

// A schema by its name; of a kind of file, or of our own output.
struct NamedSchema {
    const char* name;
    std::optional<FileKind> file;
    Json (*output)();
};

constexpr NamedSchema kSchemas[] = {{"startup", FileKind::STARTUP, nullptr},
                                    {"top", FileKind::TOP_LEVEL, nullptr},
                                    {"replace", FileKind::REPLACE, nullptr},
                                    {"diagnostics", std::nullopt, DiagnosticsSchema},
                                    {"plan", std::nullopt, PlanSchema}};

// The first one without a word.
const NamedSchema& TakeSchema(std::vector<std::string>& words)
{
    if (words.empty()) {
        return kSchemas[0];
    }
    const std::string word = words.front();
    words.erase(words.begin());
    std::vector<std::string> names;
    for (const NamedSchema& known : kSchemas) {
        if (word == known.name) {
            return known;
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
        const NamedSchema& schema = TakeSchema(words);
        RefuseWords(words);
        if (session.Options().format != "markdown") {
            session.PrintJson(schema.file ? FileSchema(*schema.file) : schema.output());
            return EXIT_DONE;
        }
        if (!schema.file) {
            throw UsageFailure(fmt::format("the schema \"{}\" has no keys to make a table of", schema.name));
        }
        session.Print(KeyTable(*schema.file));
        session.Print(*schema.file == FileKind::STARTUP ? "\n" + OutcomeTable() : "");
        return EXIT_DONE;
    }
};

constexpr Description kSchemaHelp = {
    "The JSON Schema (draft-07) of one kind of file: \"startup\" (applications; the default), \"top\"\n"
    "(top-level and sub-startup files) or \"replace\" (values of placeholders). Editors that know YAML "
    "check\n"
    "and complete a file by it while it is written, when its first line says where the schema lies:\n\n"
    "    # yaml-language-server: $schema=startup.schema.json\n\n"
    "Unknown keys are refused; keys that begin with \"x-\" are yours. \"check\" finds more than a schema "
    "can.\n"
    "With --format markdown: the same keys as tables.\n\n"
    "\"diagnostics\" and \"plan\" are the schemas of what \"check\" and \"plan\" print with --format json.",
    "0 done, 2 the work could not be done.",
    "startplan schema startup -o startup.schema.json",
    "FILES\n\n"
    "The schemas are installed, too: below the folder that the command was installed to, as\n"
    "share/startplan/schemas/startup.schema.json and so on.",
    "The keys of a top-level file as a table:\n\n"
    "    startplan schema top -f markdown",
};

const CommandEntry
    kSchemaEntry({"schema",
                  "[startup|top|replace|diagnostics|plan]",
                  "A JSON Schema, by which an editor checks and completes",
                  kSchemaHelp,
                  Section::ABOUT,
                  {"json", "markdown"},
                  []() -> std::unique_ptr<Command> { return std::make_unique<SchemaCommand>(); }});

} // namespace

} // namespace tool
