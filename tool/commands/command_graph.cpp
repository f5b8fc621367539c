#include <limits>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/graph/graph_groups.h"
#include "tool/graph/graph_highlight.h"
#include "tool/graph/graph_reduction.h"
#include "tool/graph/graph_selection.h"
#include "tool/graph/graph_svg.h"
#include "tool/graph/graph_text.h"
#include "tool/graph/graph_tree.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

// Mermaid's own default; a page that shows more must raise its "maxEdges".
constexpr std::size_t kMostMermaidEdges = 500;

struct GraphOptions {
    std::string focus;
    std::size_t depth = std::numeric_limits<std::size_t>::max();
    std::string direction;
    std::string groupBy;
    std::string highlight;
    bool isReduced = false;
    bool isStart = false;
    bool isStop = false;
    bool hasDepth = false;
};

// One of the words that an option takes.
void CheckWord(const char* option, const std::string& word, const std::vector<std::string>& words)
{
    if (word.empty() || std::find(words.begin(), words.end(), word) != words.end()) {
        return;
    }
    throw UsageFailure(
        fmt::format("{} {}: write {}{}", option, word, fmt::join(words, ", "), DidYouMean(word, words)));
}

class GraphCommand : public Command {
public:
    void Define(CLI::App& app) override
    {
        const auto text = [&app](const char* name, std::string& into, const char* type, const char* help) {
            app.add_option(name, into, help)->type_name(type)->allow_extra_args(false)->group("Options");
        };
        text("--focus", options_.focus, "NAME", "Only what is near to NAME");
        app.add_option_function<std::size_t>(
               "--depth",
               [this](std::size_t depth) {
                   options_.depth = depth;
                   options_.hasDepth = true;
               },
               "How many arrows from the focus at most")
            ->type_name("N")
            ->allow_extra_args(false)
            ->group("Options");
        text("--direction", options_.direction, "WAY",
             "From the focus: down (to what it needs), up (to what needs it), both; default: both");
        app.add_flag("--reduce", options_.isReduced, "Leave arrows out that a longer way makes needless")
            ->group("Options");
        text("--group-by", options_.groupBy, "WHAT", "Group by file or prefix");
        text("--highlight", options_.highlight, "WHAT", "Highlight cycles, critical or an application");
        app.add_flag("--start", options_.isStart, "The graph of a start request for the names, or for all")
            ->group("Options");
        app.add_flag("--stop", options_.isStop, "The graph of a stop request for the names, or for all")
            ->group("Options");
    }

    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        CheckOptions();
        const Configuration configuration = LoadForWork(session, top);
        isComplete_ = true;
        GraphPicture picture = MakePicture(session, configuration, words);
        Highlight(session, picture);
        picture = Focus(session, std::move(picture));
        if (options_.isReduced) {
            Reduce(picture);
        }
        if (options_.groupBy == "file") {
            GroupByFile(picture, configuration);
        } else if (options_.groupBy == "prefix") {
            GroupByPrefix(picture);
        }
        Print(session, configuration, picture);
        return isComplete_ ? StatusOf(configuration) : EXIT_FINDINGS;
    }

private:
    void CheckOptions() const
    {
        CheckWord("--direction", options_.direction, {"down", "up", "both"});
        CheckWord("--group-by", options_.groupBy, {"file", "prefix"});
        if (options_.isStart && options_.isStop) {
            throw UsageFailure("either --start or --stop, not both");
        }
        if (options_.focus.empty() && (options_.hasDepth || !options_.direction.empty())) {
            throw UsageFailure(
                fmt::format("{} needs --focus NAME", options_.hasDepth ? "--depth" : "--direction"));
        }
    }

    GraphPicture MakePicture(const Session& session, const Configuration& configuration,
                             const std::vector<std::string>& words)
    {
        if (options_.isStart || options_.isStop) {
            return RequestPicture(session, configuration, words);
        }
        GraphPicture all = PictureOfAll(configuration);
        if (words.empty()) {
            return all;
        }
        std::vector<std::size_t> starts;
        for (const std::string& name : words) {
            const std::size_t node = NodeNamed(session, all, name);
            if (node != kNone) {
                starts.push_back(node);
            }
        }
        return Cut(all, Reached(all, starts, Direction::DOWN, std::numeric_limits<std::size_t>::max()));
    }

    GraphPicture RequestPicture(const Session& session, const Configuration& configuration,
                                const std::vector<std::string>& words)
    {
        const RequestKind kind = options_.isStart ? RequestKind::START : RequestKind::STOP;
        const std::vector<std::string> names = words.empty() ? AllNames(configuration) : words;
        GraphPicture picture = PictureOfRequest(configuration, kind, names);
        for (const std::string& name : words) {
            const std::size_t node = picture.Find(name);
            if (node == kNone || picture.nodes[node].state != NodeState::KEPT) {
                NodeNamed(session, PictureOfAll(configuration), name);
                isComplete_ = false;
            }
        }
        return picture;
    }

    // kNone, said on standard error, where there is none.
    std::size_t NodeNamed(const Session& session, const GraphPicture& picture, const std::string& name)
    {
        const std::size_t node = picture.Find(name);
        if (node != kNone) {
            return node;
        }
        std::vector<std::string> names;
        for (const GraphNode& one : picture.nodes) {
            names.push_back(one.name);
        }
        session.Error(
            fmt::format("no application \"{}\" in the graph{}", Printable(name), DidYouMean(name, names)));
        isComplete_ = false;
        return kNone;
    }

    void Highlight(const Session& session, GraphPicture& picture)
    {
        if (options_.highlight.empty()) {
            return;
        }
        if (options_.highlight == "cycles") {
            HighlightCycles(picture);
            return;
        }
        if (options_.highlight == "critical") {
            HighlightLongestChain(picture);
            return;
        }
        const std::size_t node = NodeNamed(session, picture, options_.highlight);
        if (node != kNone) {
            HighlightNode(picture, node);
        }
    }

    GraphPicture Focus(const Session& session, GraphPicture picture)
    {
        if (options_.focus.empty()) {
            return picture;
        }
        const std::size_t node = NodeNamed(session, picture, options_.focus);
        const std::vector<std::size_t> starts =
            node == kNone ? std::vector<std::size_t>() : std::vector<std::size_t>{node};
        return Cut(picture, Reached(picture, starts, WayOf(options_.direction), options_.depth));
    }

    static Direction WayOf(const std::string& direction)
    {
        if (direction == "down") {
            return Direction::DOWN;
        }
        return direction == "up" ? Direction::UP : Direction::BOTH;
    }

    void Print(Session& session, const Configuration& configuration, const GraphPicture& picture) const
    {
        const std::string& format = session.Options().format;
        if (format == "json") {
            Json json = ConfigurationJson("graph", configuration);
            AddGraph(json, picture);
            session.PrintJson(json);
        } else if (format == "dot") {
            session.Print(ToDot(picture));
        } else if (format == "mermaid") {
            session.Print(ToMermaid(picture));
            if (picture.edges.size() > kMostMermaidEdges) {
                session.Note(
                    fmt::format("{} arrows: Mermaid refuses more than {} unless its \"maxEdges\" is raised",
                                picture.edges.size(), kMostMermaidEdges));
            }
        } else if (format == "svg") {
            session.Print(ToSvg(picture));
        } else {
            PrintTree(session, picture);
        }
    }

    void PrintTree(Session& session, const GraphPicture& picture) const
    {
        const bool isUpwards = options_.direction == "up";
        session.Print(ToTree(picture, isUpwards, session));
        if (session.Options().isQuiet) {
            return;
        }
        session.Print(picture.nodes.empty() ? "" : "\n");
        session.Print(fmt::format("{} {}, {} {}; below each one stands what {}\n", picture.nodes.size(),
                                  picture.nodes.size() == 1 ? "name" : "names", picture.edges.size(),
                                  picture.edges.size() == 1 ? "arrow" : "arrows",
                                  isUpwards ? "waits for it" : "it waits for"));
        for (const std::string& line : picture.legend) {
            session.Print((line.rfind("highlighted", 0) == 0 ? "* " : "") + line + "\n");
        }
    }

    GraphOptions options_;
    bool isComplete_ = true;
};

constexpr Description kGraphHelp = {
    "Who depends on whom: of the whole configuration, of the named applications and all that they need, or,\n"
    "with --start or --stop, of one request as the library takes it. --focus shows the surroundings of one\n"
    "application. Dropped applications and names that are not configured are part of the picture.\n"
    "An application that is called \"cycles\" or \"critical\" cannot be highlighted.",
    "0 done, 1 a name is not found or the library's result is not 0, 2 the work could not be\n"
    "done.",
    "startplan graph top.yaml --focus clock_sync --depth 2 -f dot | dot -Tsvg -o clock_sync.svg",
    "",
    "A picture of everything, without the arrows that a longer way makes needless:\n\n"
    "    startplan graph --reduce -f svg -o graph.svg -r replace.yaml top.yaml\n\n"
    "In which order a request to stop works:\n\n"
    "    startplan graph --stop -r replace.yaml top.yaml clock_sync",
};

const CommandEntry
    kGraphEntry({"graph",
                 "TOP [NAME]...",
                 "Who depends on whom, as a tree or a picture",
                 kGraphHelp,
                 Section::LOOK,
                 {"tree", "dot", "mermaid", "json", "svg"},
                 []() -> std::unique_ptr<Command> { return std::make_unique<GraphCommand>(); }});

} // namespace

} // namespace tool
