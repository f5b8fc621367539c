#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/command.h"
#include "tool/command_line/load.h"
#include "tool/commands/effective_yaml.h"
#include "tool/keys/settings.h"

namespace tool {

namespace {

class RenderCommand : public Command {
public:
    ExitStatus Run(Session& session, std::vector<std::string> words) override
    {
        const std::string top = TakeTop(session.Options(), words);
        RefuseWords(words);
        const Configuration configuration = LoadForWork(session, top);
        if (session.IsJson()) {
            session.PrintJson(ToJson(configuration));
        } else {
            session.Print(EffectiveYaml(configuration.apps));
        }
        return StatusOf(configuration);
    }

private:
    static Json ToJson(const Configuration& configuration)
    {
        Json json = ConfigurationJson("render", configuration);
        json["applications"] = Json::array();
        for (const ApplicationManifest& app : configuration.apps) {
            Json one = Json::object();
            for (const Setting& setting : Settings()) {
                one[setting.name] = setting.value(app);
            }
            json["applications"].push_back(std::move(one));
        }
        return json;
    }
};

constexpr Description kRenderHelp = {
    "Every application that the library keeps, with every setting as the device gets it: defaults written\n"
    "out, owners as numbers, files joined. The YAML is a startup file that reads as the same applications,\n"
    "so two states of a tree can be compared line by line. \"x-file\" tells where an entry stands.\n"
    "\"startup_priority\" is left out where an application has none: a written -1 gets a warning.\n"
    "Dropped applications are not in it; standard error tells them.",
    "0 done, 1 the library's result is not 0, 2 the work could not be done.",
    "startplan render -r replace.yaml -o before.yaml top.yaml",
    "",
    "What another value for one placeholder changes:\n\n"
    "    startplan render -r replace.yaml -o before.yaml top.yaml\n"
    "    startplan render -r replace.yaml -D RADAR_KIT=front -o after.yaml top.yaml\n"
    "    diff before.yaml after.yaml",
};

const CommandEntry
    kRenderEntry({"render",
                  "[TOP]",
                  "The whole effective configuration, as one startup file",
                  kRenderHelp,
                  Section::LOOK,
                  {"yaml", "json"},
                  []() -> std::unique_ptr<Command> { return std::make_unique<RenderCommand>(); }});

} // namespace

} // namespace tool
