#include "tool/commands/yaml_writer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <new>
#include <utility>

namespace tool {

namespace {

int Append(void* out, unsigned char* bytes, std::size_t size)
{
    static_cast<std::string*>(out)->append(reinterpret_cast<const char*>(bytes), size);
    return 1;
}

bool IsPlainCharacter(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return (code < 0x80 && std::isalnum(code) != 0) ||
           std::string_view("_-./+@%").find(c) != std::string_view::npos;
}

// Words that some readers of YAML take for flags, for nothing or for a number.
bool IsReserved(std::string_view text)
{
    constexpr std::array<std::string_view, 12> kWords = {"true", "false", "yes", "no",   "on",  "off",
                                                         "y",    "n",     "t",   "null", "inf", "nan"};
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find(kWords.begin(), kWords.end(), lower) != kWords.end();
}

// A letter or "/" first, so that it is no number, date or sign.
bool NeedsNoQuotes(std::string_view text)
{
    return !text.empty() && (text.front() == '/' || std::isalpha(static_cast<unsigned char>(text.front()))) &&
           std::all_of(text.begin(), text.end(), IsPlainCharacter) && !IsReserved(text);
}

yaml_char_t* Bytes(std::string_view text)
{
    return reinterpret_cast<yaml_char_t*>(const_cast<char*>(text.data())); // libyaml copies, and only reads
}

} // namespace

YamlWriter::YamlWriter()
{
    if (yaml_emitter_initialize(&emitter_) == 0) {
        throw std::bad_alloc();
    }
    yaml_emitter_set_output(&emitter_, Append, &out_);
    yaml_emitter_set_unicode(&emitter_, 1);
    yaml_emitter_set_width(&emitter_, -1);
    yaml_event_t event;
    Emit(event, yaml_stream_start_event_initialize(&event, YAML_UTF8_ENCODING));
    Emit(event, yaml_document_start_event_initialize(&event, nullptr, nullptr, nullptr, 1));
}

YamlWriter::~YamlWriter()
{
    yaml_emitter_delete(&emitter_);
}

// The emitter deletes the event, whatever comes of it.
void YamlWriter::Emit(yaml_event_t& event, int made)
{
    if (made == 0 || yaml_emitter_emit(&emitter_, &event) == 0) {
        throw std::bad_alloc();
    }
}

void YamlWriter::BeginMapping()
{
    yaml_event_t event;
    Emit(event, yaml_mapping_start_event_initialize(&event, nullptr, nullptr, 1, YAML_BLOCK_MAPPING_STYLE));
}

void YamlWriter::EndMapping()
{
    yaml_event_t event;
    Emit(event, yaml_mapping_end_event_initialize(&event));
}

void YamlWriter::BeginList()
{
    yaml_event_t event;
    Emit(event, yaml_sequence_start_event_initialize(&event, nullptr, nullptr, 1, YAML_BLOCK_SEQUENCE_STYLE));
}

void YamlWriter::EndList()
{
    yaml_event_t event;
    Emit(event, yaml_sequence_end_event_initialize(&event));
}

void YamlWriter::Scalar(std::string_view text, yaml_scalar_style_t style)
{
    yaml_event_t event;
    Emit(event, yaml_scalar_event_initialize(&event, nullptr, nullptr, Bytes(text),
                                             static_cast<int>(text.size()), 1, 1, style));
}

void YamlWriter::Text(std::string_view text)
{
    Scalar(text, NeedsNoQuotes(text) ? YAML_PLAIN_SCALAR_STYLE : YAML_DOUBLE_QUOTED_SCALAR_STYLE);
}

void YamlWriter::Plain(std::string_view text)
{
    Scalar(text, YAML_PLAIN_SCALAR_STYLE);
}

std::string YamlWriter::Take()
{
    yaml_event_t event;
    Emit(event, yaml_document_end_event_initialize(&event, 1));
    Emit(event, yaml_stream_end_event_initialize(&event));
    if (yaml_emitter_flush(&emitter_) == 0) {
        throw std::bad_alloc();
    }
    return std::exchange(out_, {});
}

} // namespace tool
