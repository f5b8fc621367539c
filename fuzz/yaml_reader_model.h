#ifndef STARTPLAN_FUZZ_YAML_READER_MODEL_H
#define STARTPLAN_FUZZ_YAML_READER_MODEL_H

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <yaml.h>

namespace fuzz {

// libyaml's tree of a text held in memory, and the plain rules by which a node is read. Nothing of the
// library is used.
class PlainYaml {
public:
    explicit PlainYaml(std::string_view text)
    {
        yaml_parser_t parser;
        yaml_parser_initialize(&parser);
        yaml_parser_set_input_string(&parser, reinterpret_cast<const unsigned char*>(text.data()),
                                     text.size());
        isLoaded_ = yaml_parser_load(&parser, &document_) != 0;
        yaml_parser_delete(&parser);
    }
    PlainYaml(const PlainYaml&) = delete;
    PlainYaml& operator=(const PlainYaml&) = delete;
    ~PlainYaml()
    {
        if (isLoaded_) {
            yaml_document_delete(&document_);
        }
    }

    bool IsLoaded() const { return isLoaded_; }
    const yaml_node_t* Root() { return isLoaded_ ? yaml_document_get_root_node(&document_) : nullptr; }

    std::vector<const yaml_node_t*> Items(const yaml_node_t& sequence)
    {
        std::vector<const yaml_node_t*> items;
        const auto& all = sequence.data.sequence.items;
        std::for_each(all.start, all.top, [&](int id) { items.push_back(Get(id)); });
        return items;
    }

    struct Pair {
        const yaml_node_t* key;
        const yaml_node_t* value;
    };
    std::vector<Pair> Pairs(const yaml_node_t& mapping)
    {
        std::vector<Pair> pairs;
        const auto& all = mapping.data.mapping.pairs;
        std::for_each(all.start, all.top, [&](const yaml_node_pair_t& pair) {
            pairs.push_back({Get(pair.key), Get(pair.value)});
        });
        return pairs;
    }

    // Up to the first zero byte; empty for a node that is no scalar.
    static std::string Text(const yaml_node_t& node)
    {
        if (node.type != YAML_SCALAR_NODE || node.data.scalar.length == 0) {
            return {};
        }
        return reinterpret_cast<const char*>(node.data.scalar.value);
    }

    template <typename Number>
    static Number ToNumber(const std::string& text)
    {
        std::stringstream stream;
        stream << text;
        Number value = 0;
        stream >> value;
        return value;
    }

    static bool ToBool(std::string text)
    {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return text.find("true") != std::string::npos;
    }

private:
    const yaml_node_t* Get(int id) { return yaml_document_get_node(&document_, id); }

    yaml_document_t document_ = {};
    bool isLoaded_ = false;
};

} // namespace fuzz

#endif
