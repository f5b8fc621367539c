#include "tool/source/source_file.h"

#include "tool/source/source_file_reader.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::uint32_t kFarRight = 1000;

} // namespace

SourceFile SourceFile::Read(const std::string& path)
{
    SourceFile file;
    file.path_ = path;
    SourceFileReader(file).Read();
    return file;
}

std::string_view SourceFile::Text(const NodeUse& use) const
{
    const SourceNode& node = Node(use);
    if (node.kind != NodeKind::SCALAR) {
        return {};
    }
    const std::string_view text = std::string_view(text_).substr(node.first, node.count);
    return text.substr(0, text.find('\0'));
}

NodeUses SourceFile::Items(const NodeUse& use) const
{
    const SourceNode& node = Node(use);
    if (node.kind != NodeKind::SEQUENCE) {
        return {};
    }
    return {uses_.data() + node.first, node.count};
}

NodeUses SourceFile::Pairs(const NodeUse& use) const
{
    const SourceNode& node = Node(use);
    if (node.kind != NodeKind::MAPPING) {
        return {};
    }
    return {uses_.data() + node.first, node.count};
}

const NodeUse* SourceFile::FindKey(const NodeUse& mapping, std::string_view key) const
{
    const NodeUses pairs = Pairs(mapping);
    for (std::size_t i = 0; i + 1 < pairs.size; i += 2) {
        if (Text(pairs[i]) == key) {
            return &pairs[i];
        }
    }
    return nullptr;
}

const NodeUse* SourceFile::Find(const NodeUse& mapping, std::string_view key) const
{
    const NodeUse* found = FindKey(mapping, key);
    return found == nullptr ? nullptr : found + 1;
}

std::string_view SourceFile::Line(std::uint32_t number) const
{
    if (lineStarts_.empty()) {
        lineStarts_.push_back(0);
        for (std::size_t end = bytes_.find('\n'); end != std::string::npos;
             end = bytes_.find('\n', end + 1)) {
            lineStarts_.push_back(static_cast<std::uint32_t>(end + 1));
        }
    }
    if (number == 0 || number > lineStarts_.size()) {
        return {};
    }
    std::string_view line = std::string_view(bytes_).substr(lineStarts_[number - 1]);
    line = line.substr(0, line.find('\n'));
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

std::string_view SourceFile::LineFrom(const Mark& mark) const
{
    if (mark.column == 0 || mark.column > kFarRight) {
        return {};
    }
    const std::string_view line = Line(mark.line);
    return line.substr(ByteOfCharacter(line, mark.column - 1));
}

} // namespace tool
