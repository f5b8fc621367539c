#include "tool/keys/file_schema.h"

#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/keys/key_page.h"

namespace tool {

namespace {

constexpr char kOwnKeys[] = "^x-";
constexpr char kBooleanText[] = "^([Tt][Rr][Uu][Ee]|[Ff][Aa][Ll][Ss][Ee])$";
constexpr char kDecimalText[] = "^[+-]?[0-9]+$";
constexpr char kHexadecimalText[] = "^(0[xX])?[0-9A-Fa-f]{1,8}$";
constexpr char kNotEmptyText[] = ".";
// What the path check lets through, and a placeholder in front; no "..", and never "${}".
constexpr char kStartupPath[] = "^(?!.*(\\.\\.|\\$\\{\\}))[/etcadsvr$]";

// What is a text for the library whatever YAML takes it for. No null: what looks like one is either empty or
// the text "null".
Json AnyText()
{
    return {{"type", {"string", "number", "boolean"}}};
}

Json Number(const Key& key, const char* pattern)
{
    return {
        {"type", {"integer", "string"}}, {"minimum", key.least}, {"maximum", key.most}, {"pattern", pattern}};
}

Json NotEmpty()
{
    return {{"type", "string"}, {"minLength", 1}};
}

Json MapTo(Json value)
{
    return {{"type", "object"}, {"additionalProperties", std::move(value)}};
}

Json TextListSchema(const Key& key)
{
    if (key.group == KeyGroup::FILES) {
        Json path = NotEmpty();
        if (std::string_view(key.name) == "startup_path_list") {
            path["pattern"] = kStartupPath;
        }
        return ListOf(std::move(path));
    }
    Json list = ListOf(AnyText());
    if (key.group == KeyGroup::DEPENDENCIES) {
        list["items"]["minLength"] = 1;
    }
    if (key.most != 0) {
        list["maxItems"] = key.most;
    }
    return list;
}

Json ValueSchema(const Key& key)
{
    switch (key.kind) {
    case KeyKind::TEXT:
        return key.isNeeded ? NotEmpty() : AnyText();
    case KeyKind::ACCOUNT:
        return NotEmpty();
    case KeyKind::FLAG:
    case KeyKind::SWITCH:
        return {{"type", {"boolean", "string"}}, {"pattern", kBooleanText}};
    case KeyKind::SIGNED:
    case KeyKind::UNSIGNED:
    case KeyKind::PRIORITY:
        return Number(key, kDecimalText);
    case KeyKind::HEXADECIMAL:
        return Number(key, kHexadecimalText);
    case KeyKind::DEVICE_ID:
        return Number(key, kNotEmptyText);
    case KeyKind::POLICY:
        return {{"enum", key.words}};
    case KeyKind::TEXT_LIST:
        return TextListSchema(key);
    case KeyKind::NUMBER_LIST:
        return ListOf(Number(key, kDecimalText));
    case KeyKind::MAP: {
        Json value = AnyText();
        value["type"].push_back("null");
        return MapTo(std::move(value));
    }
    case KeyKind::ACCESS_MAP:
        return MapTo({{"enum", key.words}});
    }
    return Json::object();
}

// The default is what an editor puts in: only where it can be written, and is not the empty text or list.
bool IsDefaultWritable(const Key& key, const Json& value)
{
    if (value.is_number()) {
        return key.standIns.empty() && value >= key.least && value <= key.most;
    }
    return value.is_boolean() || key.kind == KeyKind::POLICY;
}

std::string Description(const Key& key)
{
    if (key.group == KeyGroup::FILES) {
        return fmt::format("{}.", key.meaning);
    }
    std::string text = fmt::format("{}: {}.", TitleOf(key.group), key.meaning);
    if (key.isNeeded || key.kind == KeyKind::ACCOUNT) {
        return text;
    }
    text += fmt::format(" Left out: {}.", DefaultWords(key));
    if (std::string_view(key.absent) != key.empty) {
        text += fmt::format(" Empty: {}.", ValueWords(key, key.empty));
    }
    return text;
}

Json PropertySchema(const Key& key)
{
    Json schema{{"description", Description(key)}};
    const Json absent = Json::parse(key.absent);
    if (IsDefaultWritable(key, absent)) {
        schema["default"] = absent;
    }
    schema.update(ValueSchema(key));
    return schema;
}

// A mapping of the known keys and the user's own, and of nothing else.
Json KeysSchema(FileKind kind)
{
    Json schema{{"type", "object"}, {"properties", Json::object()}};
    for (const Key& key : KeysOf(kind)) {
        schema["properties"][key.name] = PropertySchema(key);
        if (key.isNeeded) {
            schema["required"].push_back(key.name);
        }
    }
    schema["patternProperties"] = {{kOwnKeys, true}};
    schema["additionalProperties"] = false;
    return schema;
}

// Each key of a startup file is an application. One of the user's own keys is none, unless it could start.
Json StartupSchema()
{
    const Json entry{{"$ref", "#/definitions/entry"}};
    Json schema =
        SchemaHead("startplan startup file", "Application names and what is to be started under each.");
    schema["type"] = "object";
    schema["propertyNames"] = {{"minLength", 1}, {"maxLength", 1024}};
    schema["patternProperties"] = {
        {kOwnKeys, {{"if", {{"type", "object"}, {"required", {"bin_path"}}}}, {"then", entry}}}};
    schema["additionalProperties"] = entry;
    schema["definitions"] = {{"entry", KeysSchema(FileKind::STARTUP)}};
    return schema;
}

} // namespace

Json FileSchema(FileKind kind)
{
    if (kind == FileKind::STARTUP) {
        return StartupSchema();
    }
    Json schema = kind == FileKind::TOP_LEVEL
                      ? SchemaHead("startplan top-level or sub-startup file", "Names further files.")
                      : SchemaHead("startplan replace data", "Values of the placeholders in paths.");
    schema.update(KeysSchema(kind));
    return schema;
}

Json ListOf(Json item)
{
    return {{"type", "array"}, {"items", std::move(item)}};
}

Json SchemaHead(const char* title, const char* description)
{
    return {{"$schema", "http://json-schema.org/draft-07/schema#"},
            {"title", title},
            {"description", description}};
}

} // namespace tool
