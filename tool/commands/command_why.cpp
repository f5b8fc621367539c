#include <algorithm>
#include <cstddef>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/commands/explanation.h"
#include "tool/commands/explanation_text.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

std::string DidYouMeanApp(const Configuration& configuration, const std::string& name)
{
    std::vector<std::string> names;
    for (const auto& [known, app] : configuration.appByName) {
        names.push_back(known);
    }
    return DidYouMean(name, names);
}

class WhyCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        app.add_flag("--full", isFull_, "Show every chain, however many there are")->group("Options");
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        if (words.empty()) {
            throw UsageFailure("which application? Name one, or two to see how they hang together");
        }
        RefuseWords({words.begin() + std::min<std::ptrdiff_t>(2, words.end() - words.begin()), words.end()});
        const Configuration configuration = LoadForWork(session, top);
        return words.size() == 1 ? ExplainOne(session, configuration, words.front())
                                 : ExplainTwo(session, configuration, words.front(), words.back());
    }

private:
    ExitStatus ExplainOne(Session& session, const Configuration& configuration, const std::string& name) const
    {
        const Explanation all = Explain(configuration, name);
        if (session.IsJson()) {
            Json json = ConfigurationJson("why", configuration);
            AddExplanationJson(json, configuration, all);
            session.PrintJson(json);
        }
        if (all.entries.empty() && !all.IsServed() && all.graph.Find(name) == kNone) {
            session.Error(
                fmt::format("no application \"{}\"{}", Printable(name), DidYouMeanApp(configuration, name)));
            return EXIT_FINDINGS;
        }
        if (!session.IsJson()) {
            PrintExplanation(session, configuration, all, isFull_);
        }
        const bool isHandedOut = all.IsServed() && all.start.round != 0 && all.stop.round != 0;
        return isHandedOut ? StatusOf(configuration) : EXIT_FINDINGS;
    }

    static ExitStatus ExplainTwo(Session& session, const Configuration& configuration,
                                 const std::string& from, const std::string& to)
    {
        const GraphView graph = ViewOf(configuration.library.GetApplicationDependsMap());
        std::vector<Vertex> ends;
        for (const std::string& name : {from, to}) {
            const std::size_t vertex = VertexFor(configuration, graph, name);
            if (vertex == kNone) {
                session.Error(fmt::format("no application \"{}\"{}", Printable(name),
                                          DidYouMeanApp(configuration, name)));
                return EXIT_FINDINGS;
            }
            if (graph.names[vertex] != name) {
                session.Note(
                    fmt::format("no application is called \"{}\"; a request for it is served by \"{}\"",
                                Printable(name), Printable(graph.names[vertex])));
            }
            ends.push_back(static_cast<Vertex>(vertex));
        }
        const std::vector<Vertex> way = FindWay(graph, ends[0], ends[1]);
        const std::vector<Vertex> back = FindWay(graph, ends[1], ends[0]);
        if (session.IsJson()) {
            Json json = ConfigurationJson("why", configuration);
            json["from"] = from;
            json["to"] = to;
            json["way"] = WayJson(configuration, graph, way);
            json["way_back"] = WayJson(configuration, graph, back);
            session.PrintJson(json);
            return way.empty() ? EXIT_FINDINGS : StatusOf(configuration);
        }
        if (!way.empty()) {
            session.Print(WayText(configuration, graph, way));
            return StatusOf(configuration);
        }
        session.Print(fmt::format("{} does not need {}{}\n", Printable(graph.names[ends[0]]),
                                  ends[0] == ends[1] ? "itself" : Printable(graph.names[ends[1]]),
                                  WordsFor(ends[0] == ends[1], !back.empty())));
        session.Print(WayText(configuration, graph, back));
        return EXIT_FINDINGS;
    }

    static const char* WordsFor(bool isSame, bool isWayBack)
    {
        if (isSame) {
            return "";
        }
        return isWayBack ? "; it is the other way round:" : ", nor the other way round";
    }

    bool isFull_ = false;
};

constexpr Description kWhyHelp = {
    "All about one application: where it stands in the files and what has become of that entry, which key "
    "of\n"
    "the library's table serves a request for it and which others would match, what it needs and who needs\n"
    "it by shortest chains, and in which round of a request for all it comes, and because of whom.\n"
    "With two names, the shortest way on which the first one needs the second one, and where each step is\n"
    "written. In a chain each name needs the next one.",
    "0 done, 1 the name is not found, is dropped or never handed out, the first one does not\n"
    "need the second one, or the library's result is not 0, 2 the work could not be done.",
    "startplan why top.yaml web clock_sync",
    "",
    "All about one application:\n\n"
    "    startplan why -r replace.yaml top.yaml clock_sync",
};

const CommandEntry kWhyEntry({"why",
                              "TOP NAME [OTHER]",
                              "Why an application is there, when it starts, and who needs it",
                              kWhyHelp,
                              Section::LOOK,
                              {"text", "json"},
                              []() -> std::unique_ptr<Command> { return std::make_unique<WhyCommand>(); }});

} // namespace

} // namespace tool
