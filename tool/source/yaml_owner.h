#ifndef STARTPLAN_TOOL_SOURCE_YAML_OWNER_H
#define STARTPLAN_TOOL_SOURCE_YAML_OWNER_H

#include <new>

#include <yaml.h>

namespace tool {

// libyaml's objects, freed at the end of their scope.
struct YamlParserOwner {
    YamlParserOwner()
    {
        if (yaml_parser_initialize(&parser) == 0) {
            throw std::bad_alloc();
        }
    }
    YamlParserOwner(const YamlParserOwner&) = delete;
    YamlParserOwner& operator=(const YamlParserOwner&) = delete;
    ~YamlParserOwner() { yaml_parser_delete(&parser); }
    yaml_parser_t parser = {};
};

struct YamlEventOwner {
    YamlEventOwner() = default;
    YamlEventOwner(const YamlEventOwner&) = delete;
    YamlEventOwner& operator=(const YamlEventOwner&) = delete;
    ~YamlEventOwner() { yaml_event_delete(&event); }
    yaml_event_t event = {};
};

struct YamlTokenOwner {
    YamlTokenOwner() = default;
    YamlTokenOwner(const YamlTokenOwner&) = delete;
    YamlTokenOwner& operator=(const YamlTokenOwner&) = delete;
    ~YamlTokenOwner() { yaml_token_delete(&token); }
    yaml_token_t token = {};
};

} // namespace tool

#endif
