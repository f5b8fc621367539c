#include "tool/keys/settings.h"

#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/keys/key_table.h"

namespace tool {

namespace {

using App = ApplicationManifest;

// What the record holds besides the values of keys, and behind which of those it stands.
struct Insertion {
    const char* behind; // "" for the beginning
    Setting setting;
};

std::vector<Insertion> Insertions()
{
    return {
        {"", {"name", "GetAppName", {}, [](const App& app) -> Json { return app.GetAppName(); }}},
        {"node_type", {"file", "GetCfgPath", {}, [](const App& app) -> Json { return app.GetCfgPath(); }}},
        {"startup_priority",
         {"is_delay_core_affinity",
          "GetIsDelayCoreAffinity",
          {},
          [](const App& app) -> Json { return app.GetIsDelayCoreAffinity(); }}},
        {"startup_priority",
         {"device_id_pattern",
          "GetVfIdPattern",
          {"device_id"},
          [](const App& app) -> Json { return app.GetVfIdPattern(); }}},
    };
}

Setting SettingOf(const Key& key)
{
    Setting setting{key.name, key.getter, {key.name}, key.value};
    setting.keys.insert(setting.keys.end(), key.standIns.begin(), key.standIns.end());
    return setting;
}

std::vector<Setting> MakeSettings()
{
    std::vector<Setting> settings;
    const auto insertBehind = [&settings](std::string_view name) {
        for (Insertion& insertion : Insertions()) {
            if (insertion.behind == name) {
                settings.push_back(std::move(insertion.setting));
            }
        }
    };
    insertBehind("");
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        if (key.value != nullptr) {
            settings.push_back(SettingOf(key));
        }
        insertBehind(key.name);
    }
    return settings;
}

std::string ItemText(const Json& item)
{
    if (item.is_string()) {
        const std::string text = item.get<std::string>();
        return text.empty() ? "\"\"" : text;
    }
    if (item.is_object() && item.size() == 2 && (item.contains("group") || item.contains("key"))) {
        return fmt::format("{}: {}", ItemText(item.front()), ItemText(item.back()));
    }
    return item.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

const std::vector<Setting>& Settings()
{
    static const std::vector<Setting> kSettings = MakeSettings();
    return kSettings;
}

std::string ValueText(const Json& value)
{
    std::vector<std::string> items;
    if (value.is_array()) {
        for (const Json& item : value) {
            items.push_back(ItemText(item));
        }
        return fmt::format("[{}]", fmt::join(items, ", "));
    }
    if (value.is_object()) {
        for (const auto& [key, item] : value.items()) {
            items.push_back(fmt::format("{}: {}", key, ItemText(item)));
        }
        return fmt::format("{{{}}}", fmt::join(items, ", "));
    }
    return ItemText(value);
}

} // namespace tool
