#include <cstdint>
#include <limits>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/commands/expansion.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kDefaultLimit = 1000;
constexpr std::size_t kMostLimit = 1'000'000;

std::string CountText(std::uint64_t count)
{
    return count == std::numeric_limits<std::uint64_t>::max() ? fmt::format("more than {}", count)
                                                              : std::to_string(count);
}

Json ExpansionJson(const std::string& pattern, const Expansion& expansion)
{
    Json json{{"pattern", pattern},        {"members", expansion.members}, {"at_most", expansion.most},
              {"is_cut", expansion.isCut}, {"is_open", expansion.isOpen},  {"remarks", expansion.remarks},
              {"fault", nullptr}};
    if (!expansion.fault.empty()) {
        json["fault"] = expansion.fault;
    }
    return json;
}

class ExpandCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        app.add_option("--limit", limit_,
                       fmt::format("Stop after N names of each pattern [{}]", kDefaultLimit))
            ->type_name("N")
            ->check(CLI::Range(std::size_t{1}, kMostLimit).description(""))
            ->group("Options");
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        if (words.empty()) {
            throw UsageFailure("which pattern? Give one, or more, in quotes: 'app_<1-3>'");
        }
        ExitStatus status = EXIT_DONE;
        Json json = JsonDocument("expand");
        json["patterns"] = Json::array();
        for (const std::string& pattern : words) {
            const Expansion expansion = Expand(pattern, limit_);
            status = expansion.fault.empty() ? status : EXIT_FINDINGS;
            if (session.IsJson()) {
                json["patterns"].push_back(ExpansionJson(pattern, expansion));
            } else {
                PrintMembers(session, pattern, expansion);
            }
        }
        if (session.IsJson()) {
            session.PrintJson(json);
        }
        return status;
    }

private:
    static void PrintMembers(Session& session, const std::string& pattern, const Expansion& expansion)
    {
        const std::string shown = Printable(pattern);
        if (!expansion.fault.empty()) {
            session.Error(fmt::format("\"{}\": {}", shown, expansion.fault));
            return;
        }
        for (const std::string& member : expansion.members) {
            session.Print(Printable(member) + "\n");
        }
        for (const std::string& remark : expansion.remarks) {
            session.Note(fmt::format("\"{}\": {}", shown, remark));
        }
        if (expansion.isCut) {
            session.Warn(fmt::format("\"{}\": cut off after {} names of {}; --limit N shows more", shown,
                                     expansion.members.size(), CountText(expansion.most)));
        }
    }

    std::size_t limit_ = kDefaultLimit;
};

constexpr Description kExpandHelp = {
    "The names that a pattern stands for, one a line, without reading any file. Numbers are written without\n"
    "leading zeros, though the library takes app_01 for app_1. A parameter that stands for any text, <*> or\n"
    "<*PATH>, is left as it is. What no list can show is said on standard error. Put patterns in quotes:\n"
    "to the shell, < and > mean files.",
    "0 done, 1 no name can match a pattern, 2 the work could not be done.",
    "startplan expand 'lidar_<1,2,4-6>'",
    "",
    "The first ten names of a family without end:\n\n"
    "    startplan expand --limit 10 'port_<>'",
};

const CommandEntry
    kExpandEntry({"expand",
                  "PATTERN...",
                  "The names that a pattern stands for",
                  kExpandHelp,
                  Section::PATTERNS,
                  {"text", "json"},
                  []() -> std::unique_ptr<Command> { return std::make_unique<ExpandCommand>(); }});

} // namespace

} // namespace tool
