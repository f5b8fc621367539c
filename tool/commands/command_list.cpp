#include <set>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/command_line/text_table.h"

namespace tool {

namespace {

std::string Counted(std::size_t count, const char* one, const char* many)
{
    return fmt::format("{} {}", count, count == 1 ? one : many);
}

class ListCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        RefuseWords(words);
        const Configuration configuration = LoadForWork(session, top);
        if (session.IsJson()) {
            session.PrintJson(ToJson(configuration));
        } else {
            PrintTable(session, configuration);
        }
        return StatusOf(configuration);
    }

private:
    static void PrintTable(Session& session, const Configuration& configuration)
    {
        TextTable table;
        table.AddColumn("NAME");
        table.AddColumn("BIN PATH", Align::LEFT, true);
        table.AddColumn("UID", Align::RIGHT);
        table.AddColumn("GID", Align::RIGHT);
        table.AddColumn("RESTART");
        table.AddColumn("DEPENDS", Align::RIGHT);
        table.AddColumn("FILE", Align::LEFT, true);
        table.LeaveOutFirst({"GID", "DEPENDS", "UID", "FILE", "RESTART", "BIN PATH"});
        for (const ApplicationManifest& app : configuration.apps) {
            table.AddRow({app.GetAppName(), app.GetBinPath(), std::to_string(app.GetUid()),
                          std::to_string(app.GetGid()), app.GetRestart(),
                          std::to_string(app.GetDependList().size()), app.GetCfgPath()});
        }
        if (!configuration.apps.empty()) {
            session.Print(table.Render(session));
        }
        if (!session.Options().isQuiet) {
            session.Print(ClosingLine(configuration));
        }
    }

    static std::string ClosingLine(const Configuration& configuration)
    {
        std::string line =
            fmt::format("{}, {} read", Counted(configuration.apps.size(), "application", "applications"),
                        Counted(configuration.FilesRead(), "file", "files"));
        if (configuration.FilesSkipped() != 0) {
            line += fmt::format(", {} named but not read",
                                Counted(configuration.FilesSkipped(), "file", "files"));
        }
        std::set<std::string> dropped;
        for (const MissingDependency& one : configuration.missing) {
            dropped.insert(one.application);
        }
        if (!dropped.empty()) {
            line += fmt::format(", {} dropped", Counted(dropped.size(), "application", "applications"));
        }
        return line + "\n";
    }

    static Json ToJson(const Configuration& configuration)
    {
        Json json = ConfigurationJson("list", configuration);
        json["files_read"] = configuration.FilesRead();
        json["files_not_read"] = configuration.FilesSkipped();
        Json& applications = json["applications"] = Json::array();
        for (std::size_t i = 0; i < configuration.apps.size(); ++i) {
            const ApplicationManifest& app = configuration.apps[i];
            Json one{{"name", app.GetAppName()},    {"bin_path", app.GetBinPath()},
                     {"uid", app.GetUid()},         {"gid", app.GetGid()},
                     {"restart", app.GetRestart()}, {"depends", app.GetDependList()},
                     {"file", app.GetCfgPath()}};
            if (const SourceEntry* entry = configuration.EntryOf(i)) {
                one["position"] = PositionJson(configuration.tree.PositionOf(*entry));
            }
            applications.push_back(std::move(one));
        }
        return json;
    }
};

constexpr Description kListHelp = {
    "One row for each application, in the order in which the library hands them out. DEPENDS counts the\n"
    "names in its \"depends\". Dropped applications are no rows; standard error tells them.",
    "0 done, 1 the library's result is not 0, 2 the work could not be done.",
    "startplan list -r replace.yaml top.yaml",
    "",
    "With another value for one placeholder:\n\n"
    "    startplan list -r replace.yaml -D RADAR_KIT=front top.yaml\n\n"
    "As the device sees it whose image lies below a folder:\n\n"
    "    startplan list --root build/image /etc/vehicle/top.yaml",
};

const CommandEntry kListEntry({"list",
                               "[TOP]",
                               "The applications of a configuration, as a table",
                               kListHelp,
                               Section::LOOK,
                               {"text", "json"},
                               []() -> std::unique_ptr<Command> { return std::make_unique<ListCommand>(); }});

} // namespace

} // namespace tool
