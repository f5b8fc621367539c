#include "tool/source/ignore_comments.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <yaml.h>

#include "tool/source/yaml_owner.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::string_view kWord = "startplan:";
constexpr std::string_view kIgnore = "ignore[";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view WithoutBlanks(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(kBlanks);
    return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

bool IsBlankOrComment(std::string_view line)
{
    line = WithoutBlanks(line);
    return line.empty() || line.front() == '#';
}

// Finds the comments of one file. libyaml does not hand comments out, but it tells where every scalar begins
// and ends: what begins with "#" outside of them is a comment.
class CommentReader {
public:
    explicit CommentReader(const SourceFile& file)
        : file_(file), bytes_(file.Content()),
          lineCount_(static_cast<std::uint32_t>(std::count(bytes_.begin(), bytes_.end(), '\n')) + 1)
    {
        byte_ = bytes_.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
    }

    std::vector<IgnoreComment> Read()
    {
        YamlParserOwner owner;
        yaml_parser_set_input_string(&owner.parser, reinterpret_cast<const unsigned char*>(bytes_.data()),
                                     bytes_.size());
        // Behind a mistake comments cannot be told from text.
        for (YamlTokenOwner token; yaml_parser_scan(&owner.parser, &token.token) != 0;
             yaml_token_delete(&token.token)) {
            if (token.token.type == YAML_STREAM_END_TOKEN) {
                ReadUntil(bytes_.size());
                break;
            }
            if (token.token.type == YAML_SCALAR_TOKEN) {
                TakeScalar(token.token);
            }
        }
        return std::move(comments_);
    }

private:
    void TakeScalar(const yaml_token_t& token)
    {
        const std::size_t begin = ByteAt(token.start_mark.index);
        ReadUntil(begin);
        const yaml_scalar_style_t style = token.data.scalar.style;
        if (style == YAML_LITERAL_SCALAR_STYLE || style == YAML_FOLDED_SCALAR_STYLE) {
            // The line of "|" may have a comment.
            ReadUntil(std::min(bytes_.find('\n', begin), bytes_.size()));
        }
        read_ = std::max(read_, ByteAt(token.end_mark.index));
    }

    // libyaml counts characters. Only ever asked with growing numbers.
    std::size_t ByteAt(std::size_t character)
    {
        byte_ += ByteOfCharacter(bytes_.substr(byte_), character - character_);
        character_ = character;
        return byte_;
    }

    // Reads the comments up to a byte, which is in none of them.
    void ReadUntil(std::size_t end)
    {
        while (read_ < end) {
            const std::size_t hash = bytes_.find('#', read_);
            if (hash >= end) {
                read_ = end;
                return;
            }
            const std::size_t lineEnd = std::min(bytes_.find('\n', hash), bytes_.size());
            TakeComment(hash, lineEnd);
            read_ = lineEnd;
        }
    }

    void TakeComment(std::size_t hash, std::size_t end)
    {
        std::string_view text = bytes_.substr(hash + 1, end - hash - 1);
        if (!text.empty() && text.back() == '\r') {
            text.remove_suffix(1);
        }
        text = WithoutBlanks(text);
        if (text.substr(0, kWord.size()) != kWord) {
            return;
        }
        const std::uint32_t line = LineOf(hash);
        const std::uint32_t target = TargetOf(line);
        const std::string_view wanted = WithoutBlanks(text.substr(kWord.size()));
        const std::size_t close = wanted.find(']');
        if (wanted.substr(0, kIgnore.size()) != kIgnore || close == std::string_view::npos) {
            comments_.push_back({MarkOf(line, hash), "", Width(bytes_.substr(hash, end - hash)), target});
            return;
        }
        std::string_view list = wanted.substr(kIgnore.size(), close - kIgnore.size());
        while (!list.empty()) {
            const std::size_t begin = list.find_first_not_of(", \t");
            if (begin == std::string_view::npos) {
                return;
            }
            list.remove_prefix(begin);
            const std::string_view id = list.substr(0, list.find_first_of(", \t"));
            comments_.push_back({MarkOf(line, static_cast<std::size_t>(id.data() - bytes_.data())),
                                 std::string(id), Width(id), target});
            list.remove_prefix(id.size());
        }
    }

    // Only ever asked with growing bytes.
    std::uint32_t LineOf(std::size_t byte)
    {
        lines_ +=
            static_cast<std::uint32_t>(std::count(bytes_.begin() + static_cast<std::ptrdiff_t>(counted_),
                                                  bytes_.begin() + static_cast<std::ptrdiff_t>(byte), '\n'));
        counted_ = byte;
        return lines_ + 1;
    }

    Mark MarkOf(std::uint32_t line, std::size_t byte) const
    {
        const std::string_view whole = file_.Line(line);
        const auto begin = static_cast<std::size_t>(whole.data() - bytes_.data());
        return {line, static_cast<std::uint32_t>(Width(whole.substr(0, byte - begin))) + 1};
    }

    std::uint32_t TargetOf(std::uint32_t line)
    {
        if (!IsBlankOrComment(file_.Line(line))) {
            return line;
        }
        // The line found for the comment before is this one's, too, where nothing stands between them.
        for (target_ = std::max(target_, line); target_ < lineCount_; ++target_) {
            if (!IsBlankOrComment(file_.Line(target_))) {
                break;
            }
        }
        return target_;
    }

    const SourceFile& file_;
    std::string_view bytes_;
    std::uint32_t lineCount_;
    std::size_t read_ = 0;      // comments up to here have been read
    std::size_t character_ = 0; // the last one asked for, and its byte
    std::size_t byte_ = 0;
    std::size_t counted_ = 0; // up to which byte line ends have been counted
    std::uint32_t lines_ = 0;
    std::uint32_t target_ = 0;
    std::vector<IgnoreComment> comments_;
};

} // namespace

std::vector<IgnoreComment> ReadIgnoreComments(const SourceFile& file)
{
    if (file.Content().find(kWord) == std::string_view::npos) {
        return {};
    }
    return CommentReader(file).Read();
}

} // namespace tool
