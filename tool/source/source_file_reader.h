#ifndef STARTPLAN_TOOL_SOURCE_SOURCE_FILE_READER_H
#define STARTPLAN_TOOL_SOURCE_SOURCE_FILE_READER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include <yaml.h>

#include "tool/source/source_file.h"

namespace tool {

// Fills one SourceFile; used by SourceFile::Read() alone.
class SourceFileReader {
public:
    explicit SourceFileReader(SourceFile& file) : file_(file) {}

    void Read();

private:
    // A sequence or mapping whose end has not come yet.
    struct Open {
        std::uint32_t node = 0;
        std::size_t firstPending = 0;
    };

    bool ReadBytes();
    void ReadDocument(yaml_parser_t& parser);
    // False at the end of the document, or when the file cannot be read on.
    bool Take(const yaml_event_t& event);
    void LookBehindDocument(yaml_parser_t& parser);
    std::uint32_t AddNode(NodeKind kind, const yaml_event_t& event, const yaml_char_t* anchor);
    void AddUse(NodeUse use);
    void AddScalar(const yaml_event_t& event);
    void AddAlias(const yaml_event_t& event);
    void OpenNode(NodeKind kind, const yaml_event_t& event, const yaml_char_t* anchor);
    void CloseNode();
    void CountAnchorSteps(Mark mark);
    void Stop(FileState state, std::string error, Mark mark);
    void StopAtParserError(const yaml_parser_t& parser);
    Mark MarkOfByte(std::size_t byte) const;

    SourceFile& file_;
    std::vector<Open> open_;
    std::vector<NodeUse> pending_; // items of the open nodes, the innermost one's last
    std::unordered_map<std::string, std::uint32_t> anchors_;
    std::size_t anchorSteps_ = 0;
    std::size_t nestingSteps_ = 0;
    bool hasRoot_ = false;
    bool isStopped_ = false;
};

} // namespace tool

#endif
