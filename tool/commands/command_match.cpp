#include <algorithm>
#include <optional>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/patterns/name_match.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

constexpr std::size_t kMostFailing = 10; // shown as text

const char* KindName(ParseAndDepend::PatternType type)
{
    switch (type) {
    case ParseAndDepend::PATTERN_NUM:
        return "number";
    case ParseAndDepend::PATTERN_PATH:
        return "path";
    case ParseAndDepend::PATTERN_ANY:
        return "any";
    default:
        return "text";
    }
}

std::string Verdict(const PieceMatch& match)
{
    const std::string text = fmt::format("\"{}\"", Printable(match.text));
    if (match.piece.IsText()) {
        return match.rest.empty()
                   ? text
                   : fmt::format("{}; what follows is not looked at: \"{}\"", text, Printable(match.rest));
    }
    return fmt::format("{} {}", text, match.reason);
}

// Of the last entry with that name: the one whose dependencies count.
std::optional<Position> PositionOf(const Configuration& configuration, const KeyMatch& key)
{
    const std::size_t app = configuration.FindApp(key.key);
    const SourceEntry* entry = app == kNone ? nullptr : configuration.EntryOf(app);
    return entry == nullptr ? std::nullopt : std::optional(configuration.tree.PositionOf(*entry));
}

class MatchPrinter {
public:
    MatchPrinter(Session& session, const Configuration& configuration, const NameMatch& match)
        : session_(session), configuration_(configuration), match_(match)
    {}

    void Print()
    {
        const std::string name = session_.In(Color::BOLD, Printable(match_.name));
        session_.Print(match_.winner ? fmt::format("{}  served by {}\n", name, Printable(*match_.winner))
                                     : fmt::format("{}  no key matches{}\n", name, WhyNot()));
        for (const KeyMatch& key : match_.matching) {
            PrintKey(key, match_.matching.size() > 1 && key.key == match_.winner ? "  taken" : "");
        }
        if (match_.matching.size() > 1) {
            session_.Print(session_.In(
                Color::YELLOW,
                fmt::format("  {} keys match. Which one is taken is not defined: another build of the\n"
                            "  library, or one application more, may change it.\n",
                            match_.matching.size())));
        }
        PrintFailing();
    }

private:
    std::string WhyNot() const
    {
        if (match_.name.empty() || match_.name.size() > kLongestName) {
            return fmt::format(": a name has 1 to {} bytes", kLongestName);
        }
        if (const auto position = configuration_.PositionOfApp(match_.name);
            position && configuration_.FindApp(match_.name) == kNone) {
            return fmt::format(": the entry at {} is not kept", Printable(ToText(*position)));
        }
        std::vector<std::string> names;
        for (const auto& [known, app] : configuration_.appByName) {
            names.push_back(known);
        }
        return DidYouMean(match_.name, names);
    }

    void PrintKey(const KeyMatch& key, const std::string& remark)
    {
        const auto position = PositionOf(configuration_, key);
        session_.Print(fmt::format("  {}{}{}\n", Printable(key.key),
                                   position ? "  " + Printable(ToText(*position)) : std::string(), remark));
        std::size_t width = 0;
        for (const PieceMatch& piece : key.pieces) {
            width = std::max(width, Width(Printable(piece.piece.Written())));
        }
        for (const PieceMatch& piece : key.pieces) {
            const std::string written = Printable(piece.piece.Written());
            session_.Print(fmt::format("    {}{}  {:<6}  {}\n", written,
                                       std::string(width - Width(written), ' '), KindName(piece.piece.type),
                                       Verdict(piece)));
        }
    }

    void PrintFailing()
    {
        const std::size_t shown = std::min(match_.failing.size(), kMostFailing);
        for (std::size_t i = 0; i < shown; ++i) {
            PrintKey(match_.failing[i], "  does not match");
        }
        if (shown < match_.failing.size()) {
            session_.Print(
                fmt::format("  and {} patterns more that do not match\n", match_.failing.size() - shown));
        }
    }

    Session& session_;
    const Configuration& configuration_;
    const NameMatch& match_;
};

Json KeyJson(const Configuration& configuration, const KeyMatch& key)
{
    Json json{{"key", key.key}};
    if (const auto position = PositionOf(configuration, key)) {
        json["position"] = PositionJson(*position);
    }
    json["pieces"] = Json::array();
    for (const PieceMatch& match : key.pieces) {
        Json piece{{"kind", KindName(match.piece.type)},
                   {"pattern", match.piece.text},
                   {"text", match.text},
                   {"matches", match.matches}};
        if (!match.rest.empty()) {
            piece["not_looked_at"] = match.rest;
        }
        json["pieces"].push_back(std::move(piece));
    }
    return json;
}

Json MatchJson(const Configuration& configuration, const NameMatch& match)
{
    Json json{{"name", match.name}, {"winner", nullptr}};
    if (match.winner) {
        json["winner"] = *match.winner;
    }
    json["is_defined"] = match.matching.size() < 2;
    json["matching"] = Json::array();
    for (const KeyMatch& key : match.matching) {
        json["matching"].push_back(KeyJson(configuration, key));
    }
    json["failing"] = Json::array();
    for (const KeyMatch& key : match.failing) {
        json["failing"].push_back(KeyJson(configuration, key));
    }
    return json;
}

class MatchCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        if (words.empty()) {
            throw UsageFailure("which name? Give one, or more");
        }
        const Configuration configuration = LoadForWork(session, top);
        ExitStatus status = StatusOf(configuration);
        Json json = ConfigurationJson("match", configuration);
        json["names"] = Json::array();
        bool isFirst = true;
        for (const std::string& name : words) {
            const NameMatch match = MatchName(configuration.library, name);
            session.Show(match.lines);
            status = match.matching.size() == 1 ? status : EXIT_FINDINGS;
            if (session.IsJson()) {
                json["names"].push_back(MatchJson(configuration, match));
                continue;
            }
            session.Print(isFirst ? "" : "\n");
            MatchPrinter(session, configuration, match).Print();
            isFirst = false;
        }
        if (session.IsJson()) {
            session.PrintJson(json);
        }
        return status;
    }
};

constexpr Description kMatchHelp = {
    "Looks names up as a request does: shows the key of the dependency table that the library takes, and\n"
    "every other one that matches, each with the part of the name that its pieces take. Of the keys that\n"
    "do not match, it shows the patterns whose text fits, and why their parameters do not. The name need\n"
    "not be in any file. -v also shows what the device would log.",
    "0 one key matches each name, 1 a name matches no key or several, or the library's result\n"
    "is not 0, 2 the work could not be done.",
    "startplan match top.yaml camera_2",
    "",
    "Several names, with the lines that the device would log:\n\n"
    "    startplan match -v -r replace.yaml top.yaml lidar_3 camera_9",
};

const CommandEntry
    kMatchEntry({"match",
                 "TOP NAME...",
                 "Which entry serves a name, piece by piece",
                 kMatchHelp,
                 Section::PATTERNS,
                 {"text", "json"},
                 []() -> std::unique_ptr<Command> { return std::make_unique<MatchCommand>(); }});

} // namespace

} // namespace tool
