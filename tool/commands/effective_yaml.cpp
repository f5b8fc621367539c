#include "tool/commands/effective_yaml.h"

#include <string_view>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/commands/yaml_writer.h"
#include "tool/keys/settings.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

void WriteScalar(YamlWriter& writer, const Json& value)
{
    if (value.is_string()) {
        writer.Text(value.get_ref<const std::string&>());
        return;
    }
    writer.Plain(value.dump());
}

// What comes as pairs goes into a mapping, repeated names included.
void WritePairs(YamlWriter& writer, const Json& pairs)
{
    writer.BeginMapping();
    for (const Json& pair : pairs) {
        writer.Text(pair.front().get_ref<const std::string&>());
        writer.Text(pair.back().get_ref<const std::string&>());
    }
    writer.EndMapping();
}

void WriteMapping(YamlWriter& writer, const Json& mapping)
{
    writer.BeginMapping();
    for (const auto& [name, value] : mapping.items()) {
        writer.Text(name);
        WriteScalar(writer, value);
    }
    writer.EndMapping();
}

void WriteList(YamlWriter& writer, const Json& items)
{
    writer.BeginList();
    for (const Json& item : items) {
        WriteScalar(writer, item);
    }
    writer.EndList();
}

void WriteValue(YamlWriter& writer, std::string_view key, const Json& value)
{
    if (key == "node_type") {
        writer.Plain(fmt::format("0x{:X}", value.get<std::uint32_t>()));
    } else if (key == "cgroup_path" || key == "sharepool_groups") {
        WritePairs(writer, value);
    } else if (value.is_object()) {
        WriteMapping(writer, value);
    } else if (value.is_array()) {
        WriteList(writer, value);
    } else if (value.is_number_unsigned()) {
        // Such a key is read as a signed number and then taken as unsigned: what is above its range can be
        // written below zero only.
        writer.Plain(std::to_string(static_cast<std::int32_t>(value.get<std::uint32_t>())));
    } else {
        WriteScalar(writer, value);
    }
}

// What no key sets, what is written as a text besides, and the priority that reads with a warning.
bool IsLeftOut(const Setting& setting, const ApplicationManifest& app)
{
    const std::string_view name = setting.name;
    return setting.keys.empty() || name == "device_id" ||
           (name == "startup_priority" && app.GetStartupPriority() < 0);
}

void WriteApplication(YamlWriter& writer, const ApplicationManifest& app)
{
    writer.Text(app.GetAppName());
    writer.BeginMapping();
    for (const Setting& setting : Settings()) {
        if (IsLeftOut(setting, app)) {
            continue;
        }
        const char* key = setting.keys.front();
        writer.Text(key);
        WriteValue(writer, key, setting.value(app));
    }
    writer.Text("x-file");
    writer.Text(Printable(app.GetCfgPath()));
    writer.EndMapping();
}

} // namespace

std::string EffectiveYaml(const std::vector<ApplicationManifest>& apps)
{
    YamlWriter writer;
    writer.BeginMapping();
    for (const ApplicationManifest& app : apps) {
        WriteApplication(writer, app);
    }
    writer.EndMapping();
    return writer.Take();
}

} // namespace tool
