#include <algorithm>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/command_line/text_table.h"
#include "tool/keys/settings.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

// Where a setting's value comes from.
struct Origin {
    const char* kind = "none"; // "written", "fallback", "default", "none" for what is no key's
    const char* key = nullptr;
    std::optional<Position> position;
    std::string written; // the text in the file, where it is a scalar
};

Origin OriginOf(const Configuration& configuration, std::size_t app, const Setting& setting)
{
    Origin origin;
    const SourceEntry* entry = configuration.EntryOf(app);
    if (setting.keys.empty() || entry == nullptr) {
        return origin;
    }
    const SourceFile& file = configuration.tree.FileOf(*entry);
    origin.kind = "default";
    // The names count only where neither number is written.
    const bool hasNumber =
        file.Find(entry->value, "uid") != nullptr || file.Find(entry->value, "gid") != nullptr;
    for (const char* key : setting.keys) {
        const NodeUse* at = file.FindKey(entry->value, key);
        const bool isName = std::string_view(key) == "user_name" || std::string_view(key) == "group_name";
        if (at == nullptr || (isName && hasNumber)) {
            continue;
        }
        const NodeUse& value = at[1];
        origin.key = key;
        origin.position = configuration.tree.PositionOf(entry->visit, *at);
        origin.written = std::string(file.Text(value));
        const bool wantsScalar = setting.value(configuration.apps[app]).is_primitive();
        const bool isScalar = file.Kind(value) == NodeKind::SCALAR;
        const bool isEmpty = isScalar && origin.written.empty();
        origin.kind = wantsScalar != isScalar || isEmpty ? "fallback" : "written";
        break;
    }
    return origin;
}

std::string OriginText(const Origin& origin, const Setting& setting, const Json& value)
{
    if (!origin.position) {
        return origin.kind == std::string_view("default") ? "default" : "";
    }
    std::string text = ToText(*origin.position);
    if (std::string_view(origin.key) != setting.keys.front()) {
        text += fmt::format(", from {}", origin.key);
    }
    if (origin.kind == std::string_view("fallback")) {
        return text + ", fallback: the value is empty or of another kind";
    }
    if (value.is_primitive() && ValueText(value) != origin.written) {
        text += fmt::format(", written \"{}\"", origin.written);
    }
    return text;
}

class ShowCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        if (words.empty()) {
            throw UsageFailure("which application? Name one, or more");
        }
        const Configuration configuration = LoadForWork(session, top);
        ExitStatus status = StatusOf(configuration);
        Json json = ConfigurationJson("show", configuration);
        json["applications"] = Json::array();
        json["not_found"] = Json::array();
        bool isFirst = true;
        for (const std::string& name : words) {
            const std::size_t app = LookUp(session, configuration, name);
            if (app == kNone) {
                json["not_found"].push_back(name);
                status = EXIT_FINDINGS;
                continue;
            }
            json["applications"].push_back(ToJson(configuration, name, app));
            if (!session.IsJson()) {
                session.Print(isFirst ? "" : "\n");
                PrintSettings(session, configuration, app);
                isFirst = false;
            }
        }
        if (session.IsJson()) {
            session.PrintJson(json);
        }
        return status;
    }

private:
    // By its exact name, else by the library's own look-up, which takes the table's names for patterns.
    static std::size_t LookUp(const Session& session, const Configuration& configuration,
                              const std::string& name)
    {
        const std::size_t exact = configuration.FindApp(name);
        if (exact != kNone) {
            return exact;
        }
        LogCollector log;
        const auto found = configuration.library.GetAppFromDependsMap(name);
        session.Show(log.Take());
        if (found != configuration.library.GetApplicationDependsMap().end()) {
            session.Note(fmt::format("no application is called \"{}\"; a request for it is served by \"{}\"",
                                     Printable(name), Printable(found->first)));
            return configuration.FindApp(found->first);
        }
        std::vector<std::string> names;
        for (const auto& [known, app] : configuration.appByName) {
            names.push_back(known);
        }
        const auto position = configuration.PositionOfApp(name);
        session.Error(fmt::format("no application \"{}\"{}", Printable(name),
                                  position ? fmt::format(": the entry at {} is not kept", ToText(*position))
                                           : DidYouMean(name, names)));
        return kNone;
    }

    static void PrintSettings(Session& session, const Configuration& configuration, std::size_t app)
    {
        const SourceEntry* entry = configuration.EntryOf(app);
        const std::string& name = configuration.apps[app].GetAppName();
        session.Print(session.In(Color::BOLD, Printable(name)));
        if (entry != nullptr) {
            session.Print(fmt::format("  {}\n  read by {}",
                                      Printable(ToText(configuration.tree.PositionOf(*entry))),
                                      Printable(configuration.tree.ChainTo(entry->visit))));
        }
        session.Print("\n\n");
        TextTable table;
        table.AddColumn("SETTING");
        table.AddColumn("VALUE");
        table.AddColumn("GETTER");
        table.AddColumn("ORIGIN");
        for (const Setting& setting : Settings()) {
            const Json value = setting.value(configuration.apps[app]);
            table.AddRow({setting.name, ValueText(value), setting.getter,
                          OriginText(OriginOf(configuration, app, setting), setting, value)});
        }
        session.Print(table.Render(session));
    }

    static Json ToJson(const Configuration& configuration, const std::string& asked, std::size_t app)
    {
        Json json{{"name", configuration.apps[app].GetAppName()}, {"asked_for", asked}};
        if (const SourceEntry* entry = configuration.EntryOf(app)) {
            json["position"] = PositionJson(configuration.tree.PositionOf(*entry));
        }
        json["settings"] = Json::array();
        for (const Setting& setting : Settings()) {
            const Origin origin = OriginOf(configuration, app, setting);
            Json one{{"name", setting.name},
                     {"getter", setting.getter},
                     {"value", setting.value(configuration.apps[app])},
                     {"origin", origin.kind}};
            if (origin.position) {
                one["key"] = origin.key;
                one["position"] = PositionJson(*origin.position);
            }
            json["settings"].push_back(std::move(one));
        }
        return json;
    }
};

constexpr Description kShowHelp = {
    "Every setting of the named applications: the value that the device gets, the getter that hands it out,\n"
    "and where it comes from. A name that no application has is looked up as a request would be, among the\n"
    "patterns.",
    "0 done, 1 a name is not found or the library's result is not 0, 2 the work could not be\n"
    "done.",
    "startplan show -c top.yaml clock_sync",
    "",
    "A member of a family, by its own name:\n\n"
    "    startplan show -r replace.yaml top.yaml lidar_4",
};

const CommandEntry kShowEntry({"show",
                               "TOP NAME...",
                               "Every setting of one application, and where it comes from",
                               kShowHelp,
                               Section::LOOK,
                               {"text", "json"},
                               []() -> std::unique_ptr<Command> { return std::make_unique<ShowCommand>(); }});

} // namespace

} // namespace tool
