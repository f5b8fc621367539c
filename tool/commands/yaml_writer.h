#ifndef STARTPLAN_TOOL_COMMANDS_YAML_WRITER_H
#define STARTPLAN_TOOL_COMMANDS_YAML_WRITER_H

#include <string>
#include <string_view>

#include <yaml.h>

namespace tool {

// Writes one YAML document with libyaml's emitter, in block style: one item a line, so that two versions
// compare well line by line. Every call may throw std::bad_alloc.
class YamlWriter {
public:
    YamlWriter();
    YamlWriter(const YamlWriter&) = delete;
    YamlWriter& operator=(const YamlWriter&) = delete;
    ~YamlWriter();

    void BeginMapping();
    void EndMapping();
    void BeginList();
    void EndList();
    // A text: in quotes unless every YAML reader takes it for a text without them. @pre valid UTF-8.
    void Text(std::string_view text);
    // A number or a flag, as it is.
    void Plain(std::string_view text);

    // Ends the document. @pre everything that was begun has ended.
    std::string Take();

private:
    void Emit(yaml_event_t& event, int made);
    void Scalar(std::string_view text, yaml_scalar_style_t style);

    yaml_emitter_t emitter_ = {};
    std::string out_;
};

} // namespace tool

#endif
