#include "tool/source/source_file_reader.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include <fmt/format.h>
#include <sys/stat.h>

#include "tool/source/file_guard.h"
#include "tool/source/yaml_owner.h"

namespace tool {

namespace {

Mark ToMark(const yaml_mark_t& mark)
{
    return {static_cast<std::uint32_t>(mark.line) + 1, static_cast<std::uint32_t>(mark.column) + 1};
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

void SourceFileReader::Read()
{
    if (const auto reason = RefuseFile(file_.path_)) {
        Stop(FileState::REFUSED, *reason, {});
        return;
    }
    if (!ReadBytes()) {
        return;
    }
    YamlParserOwner owner;
    yaml_parser_set_input_string(&owner.parser, reinterpret_cast<const unsigned char*>(file_.bytes_.data()),
                                 file_.bytes_.size());
    file_.nodes_.reserve(file_.bytes_.size() / 16);
    ReadDocument(owner.parser);
    anchors_.clear();
}

bool SourceFileReader::ReadBytes()
{
    errno = 0;
    const std::unique_ptr<std::FILE, CloseFile> input(std::fopen(file_.path_.c_str(), "rb"));
    if (input == nullptr) {
        file_.errorNumber_ = errno;
        Stop(FileState::UNREADABLE, std::strerror(errno), {});
        return false;
    }
    struct stat status = {};
    if (fstat(fileno(input.get()), &status) == 0) {
        file_.identity_ = {status.st_dev, status.st_ino};
    }
    std::string& bytes = file_.bytes_;
    constexpr std::size_t kChunk = 1 << 16;
    for (std::size_t got = kChunk; got == kChunk && bytes.size() <= kMostFileBytes;) {
        const std::size_t before = bytes.size();
        bytes.resize(before + kChunk);
        got = std::fread(bytes.data() + before, 1, kChunk, input.get());
        bytes.resize(before + got);
    }
    if (std::ferror(input.get()) != 0) {
        file_.errorNumber_ = errno;
        bytes.clear();
        Stop(FileState::UNREADABLE, std::strerror(errno), {});
        return false;
    }
    if (bytes.size() > kMostFileBytes) {
        Stop(FileState::REFUSED, fmt::format("has more than {} bytes", kMostFileBytes), {});
        return false;
    }
    return true;
}

void SourceFileReader::ReadDocument(yaml_parser_t& parser)
{
    file_.state_ = FileState::LOADED;
    for (bool goesOn = true; goesOn;) {
        YamlEventOwner owner;
        if (yaml_parser_parse(&parser, &owner.event) == 0) {
            StopAtParserError(parser);
            return;
        }
        goesOn = Take(owner.event);
    }
    if (file_.state_ == FileState::LOADED) {
        LookBehindDocument(parser);
    }
}

bool SourceFileReader::Take(const yaml_event_t& event)
{
    nestingSteps_ += open_.size();
    if (nestingSteps_ > kMostNestingSteps) {
        Stop(FileState::REFUSED,
             "is too large for being nested so deeply: the time for reading it grows with both",
             ToMark(event.start_mark));
        return false;
    }
    switch (event.type) {
    case YAML_STREAM_END_EVENT:
        Stop(FileState::EMPTY, "holds no document", {});
        break;
    case YAML_DOCUMENT_END_EVENT:
        return false;
    case YAML_SCALAR_EVENT:
        AddScalar(event);
        break;
    case YAML_ALIAS_EVENT:
        AddAlias(event);
        break;
    case YAML_SEQUENCE_START_EVENT:
        OpenNode(NodeKind::SEQUENCE, event, event.data.sequence_start.anchor);
        break;
    case YAML_MAPPING_START_EVENT:
        OpenNode(NodeKind::MAPPING, event, event.data.mapping_start.anchor);
        break;
    case YAML_SEQUENCE_END_EVENT:
    case YAML_MAPPING_END_EVENT:
        CloseNode();
        break;
    default:
        break;
    }
    return !isStopped_;
}

// An error behind the first document is nobody's concern: the library stops reading here, too.
void SourceFileReader::LookBehindDocument(yaml_parser_t& parser)
{
    YamlEventOwner owner;
    if (yaml_parser_parse(&parser, &owner.event) != 0 && owner.event.type == YAML_DOCUMENT_START_EVENT) {
        file_.extraDocument_ = ToMark(owner.event.start_mark);
    }
}

std::uint32_t SourceFileReader::AddNode(NodeKind kind, const yaml_event_t& event, const yaml_char_t* anchor)
{
    SourceNode node;
    node.kind = kind;
    node.mark = ToMark(event.start_mark);
    const auto number = static_cast<std::uint32_t>(file_.nodes_.size());
    file_.nodes_.push_back(node);
    if (anchor == nullptr) {
        return number;
    }
    CountAnchorSteps(node.mark);
    const std::string name = reinterpret_cast<const char*>(anchor);
    if (!anchors_.emplace(name, number).second) {
        Stop(FileState::NOT_YAML, fmt::format("found duplicate anchor \"{}\"", name), node.mark);
    }
    return number;
}

void SourceFileReader::AddUse(NodeUse use)
{
    if (hasRoot_) {
        pending_.push_back(use);
        return;
    }
    file_.root_ = use;
    hasRoot_ = true;
}

void SourceFileReader::AddScalar(const yaml_event_t& event)
{
    const std::uint32_t number = AddNode(NodeKind::SCALAR, event, event.data.scalar.anchor);
    SourceNode& node = file_.nodes_[number];
    node.isPlain = event.data.scalar.style == YAML_PLAIN_SCALAR_STYLE;
    node.first = static_cast<std::uint32_t>(file_.text_.size());
    node.count = static_cast<std::uint32_t>(event.data.scalar.length);
    file_.text_.append(reinterpret_cast<const char*>(event.data.scalar.value), event.data.scalar.length);
    AddUse({number, node.mark, false});
}

void SourceFileReader::AddAlias(const yaml_event_t& event)
{
    const std::string name = reinterpret_cast<const char*>(event.data.alias.anchor);
    const Mark mark = ToMark(event.start_mark);
    const auto found = anchors_.find(name);
    if (found == anchors_.end()) {
        Stop(FileState::NOT_YAML, fmt::format("found undefined alias \"{}\"", name), mark);
        return;
    }
    CountAnchorSteps(mark);
    AddUse({found->second, mark, true});
}

void SourceFileReader::OpenNode(NodeKind kind, const yaml_event_t& event, const yaml_char_t* anchor)
{
    const std::uint32_t number = AddNode(kind, event, anchor);
    AddUse({number, file_.nodes_[number].mark, false});
    if (open_.size() == kMostNesting) {
        Stop(FileState::REFUSED, fmt::format("is nested more than {} levels deep", kMostNesting),
             file_.nodes_[number].mark);
        return;
    }
    open_.push_back({number, pending_.size()});
}

void SourceFileReader::CloseNode()
{
    const Open closed = open_.back();
    open_.pop_back();
    SourceNode& node = file_.nodes_[closed.node];
    node.first = static_cast<std::uint32_t>(file_.uses_.size());
    node.count = static_cast<std::uint32_t>(pending_.size() - closed.firstPending);
    const auto begin = pending_.begin() + static_cast<std::ptrdiff_t>(closed.firstPending);
    file_.uses_.insert(file_.uses_.end(), begin, pending_.end());
    pending_.erase(begin, pending_.end());
}

void SourceFileReader::CountAnchorSteps(Mark mark)
{
    anchorSteps_ += anchors_.size();
    if (anchorSteps_ > kMostAnchorSteps) {
        Stop(FileState::REFUSED,
             "has too many anchors and aliases: the time for reading them grows with their square", mark);
    }
}

void SourceFileReader::Stop(FileState state, std::string error, Mark mark)
{
    isStopped_ = true;
    file_.state_ = state;
    file_.error_ = std::move(error);
    file_.errorMark_ = mark;
}

void SourceFileReader::StopAtParserError(const yaml_parser_t& parser)
{
    if (parser.error == YAML_MEMORY_ERROR) {
        throw std::bad_alloc();
    }
    const char* problem = parser.problem == nullptr ? "cannot be parsed" : parser.problem;
    if (parser.error == YAML_READER_ERROR) {
        Stop(FileState::NOT_YAML, problem, MarkOfByte(parser.problem_offset));
        return;
    }
    const Mark mark = ToMark(parser.problem_mark);
    if (parser.context == nullptr) {
        Stop(FileState::NOT_YAML, problem, mark);
        return;
    }
    Stop(FileState::NOT_YAML,
         fmt::format("{}, {} that begins at {}:{}", problem, parser.context, parser.context_mark.line + 1,
                     parser.context_mark.column + 1),
         mark);
}

Mark SourceFileReader::MarkOfByte(std::size_t byte) const
{
    Mark mark{1, 1};
    for (std::size_t i = 0; i < byte && i < file_.bytes_.size(); ++i) {
        const auto c = static_cast<unsigned char>(file_.bytes_[i]);
        if (c == '\n') {
            mark = {mark.line + 1, 1};
        } else if ((c & 0xC0U) != 0x80U) {
            ++mark.column;
        }
    }
    return mark;
}

} // namespace tool
