#include "tool/keys/output_schema.h"

#include <utility>

#include <nlohmann/json.hpp>

#include "tool/keys/file_schema.h"

namespace tool {

namespace {

// All members are there, and no others.
Json Object(Json properties)
{
    Json required = Json::array();
    for (const auto& [name, schema] : properties.items()) {
        required.push_back(name);
    }
    return {{"type", "object"},
            {"properties", std::move(properties)},
            {"required", std::move(required)},
            {"additionalProperties", false}};
}

Json Text()
{
    return {{"type", "string"}};
}

Json Count()
{
    return {{"type", "integer"}, {"minimum", 0}};
}

Json Reference(const char* name)
{
    return {{"$ref", std::string("#/definitions/") + name}};
}

Json Definitions()
{
    return {{"names", ListOf(Text())},
            {"result", Object({{"code", Count()}, {"name", Text()}})},
            {"position", Object({{"file", Text()}, {"line", Count()}, {"column", Count()}})}};
}

// What every document begins with.
Json Beginning(const char* format)
{
    return {{"format", {{"const", format}}},
            {"version", {{"const", 1}}},
            {"top", Text()},
            {"result", Reference("result")},
            {"dropped", ListOf(Object({{"name", Text()}, {"missing", Text()}}))}};
}

Json Document(const char* title, const char* description, Json properties)
{
    Json schema = SchemaHead(title, description);
    schema.update(Object(std::move(properties)));
    schema["definitions"] = Definitions();
    return schema;
}

Json FindingSchema()
{
    return Object({{"rule", Text()},
                   {"level", {{"enum", {"note", "warning", "error"}}}},
                   {"position", Reference("position")},
                   {"length", Count()},
                   {"message", Text()},
                   {"effect", Text()},
                   {"help", Text()},
                   {"chain", ListOf(Reference("position"))},
                   {"related", ListOf(Object({{"position", Reference("position")}, {"text", Text()}}))}});
}

} // namespace

Json DiagnosticsSchema()
{
    Json properties = Beginning("startplan-check");
    properties["result"] = {{"anyOf", {Reference("result"), {{"type", "null"}}}}};
    properties["library_called"] = {{"type", "boolean"}};
    for (const char* name : {"files_read", "files_not_read", "applications"}) {
        properties[name] = Count();
    }
    properties["summary"] =
        Object({{"errors", Count()}, {"warnings", Count()}, {"notes", Count()}, {"ignored", Count()}});
    properties["findings"] = ListOf(FindingSchema());
    return Document("startplan diagnostics", "What \"startplan check --format json\" prints.",
                    std::move(properties));
}

Json PlanSchema()
{
    const Json names = Reference("names");
    Json properties = Beginning("startplan-plan");
    properties["request"] =
        Object({{"kind", {{"enum", {"start", "stop"}}}}, {"names", names}, {"result", Reference("result")}});
    properties["rounds"] = ListOf(names);
    properties["not_found"] = names;
    properties["pulled_in"] =
        ListOf(Object({{"name", Text()}, {"needed_by", names}, {"not_awaited", names}}));
    properties["left_running"] = ListOf(Object({{"name", Text()}, {"depends_on", names}}));
    properties["cycles"] = ListOf(Object({{"members", names}, {"waits_for", names}}));
    properties["blocked"] = names;
    properties["stalled"] = names;
    return Document("startplan plan", "What \"startplan plan --format json\" prints.", std::move(properties));
}

} // namespace tool
