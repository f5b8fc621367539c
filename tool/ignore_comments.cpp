#include "tool/ignore_comments.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>
#include <yaml.h>

#include "tool/printable.h"
#include "tool/rules.h"
#include "tool/rules_check.h"
#include "tool/suggest.h"
#include "tool/yaml_owner.h"

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

Finding UnusedIgnore(const SourceFile& file, const IgnoreComment& comment)
{
    Finding finding;
    finding.rule = &kUnusedIgnore;
    finding.position = {file.Path(), comment.mark};
    finding.length = comment.length;
    finding.effect = "none: the device does not see comments";
    if (comment.rule.empty()) {
        finding.message = "this comment is not understood";
        finding.help = "write \"# startplan: ignore[RULE]\"";
        return finding;
    }
    const std::string rule = Printable(comment.rule);
    if (FindRule(comment.rule) == nullptr) {
        const std::string nearest = Nearest(comment.rule, RuleIds());
        finding.message = fmt::format("there is no rule \"{}\"", rule);
        finding.help = nearest.empty() ? "\"startplan rules\" lists all rules"
                                       : fmt::format("did you mean \"{}\"?", nearest);
        return finding;
    }
    finding.message =
        fmt::format("\"{}\" finds nothing in line {}, so there is nothing to ignore", rule, comment.line);
    finding.help = "take the comment out";
    return finding;
}

// The comments of all files of a configuration.
class Comments {
public:
    void Read(const SourceFile& file)
    {
        std::vector<IgnoreComment> comments = ReadIgnoreComments(file);
        if (comments.empty() || !files_.emplace(file.Path(), comments_.size()).second) {
            return;
        }
        File& read = comments_.emplace_back();
        read.file = &file;
        read.isUsed.assign(comments.size(), false);
        for (std::size_t i = 0; i < comments.size(); ++i) {
            read.byLine.emplace(comments[i].line, i);
        }
        read.comments = std::move(comments);
    }

    bool Hides(const Finding& finding)
    {
        const auto file = files_.find(finding.position.file);
        if (file == files_.end()) {
            return false;
        }
        File& in = comments_[file->second];
        bool isHidden = false;
        const auto [begin, end] = in.byLine.equal_range(finding.position.mark.line);
        for (auto at = begin; at != end; ++at) {
            if (in.comments[at->second].rule == finding.rule->id) {
                in.isUsed[at->second] = true;
                isHidden = true;
            }
        }
        return isHidden;
    }

    void AddUnused(const RuleLevels& levels, std::vector<Finding>& findings) const
    {
        for (const File& in : comments_) {
            for (std::size_t i = 0; i < in.comments.size(); ++i) {
                const Rule* rule = FindRule(in.comments[i].rule);
                const bool isLookedFor = rule == nullptr || levels.Of(*rule) != Level::OFF;
                if (!in.isUsed[i] && isLookedFor) {
                    findings.push_back(UnusedIgnore(*in.file, in.comments[i]));
                }
            }
        }
    }

private:
    struct File {
        const SourceFile* file = nullptr;
        std::vector<IgnoreComment> comments;
        std::vector<bool> isUsed;
        std::unordered_multimap<std::uint32_t, std::size_t> byLine;
    };

    std::vector<File> comments_;
    std::unordered_map<std::string, std::size_t> files_;
};

} // namespace

std::vector<IgnoreComment> ReadIgnoreComments(const SourceFile& file)
{
    if (file.Content().find(kWord) == std::string_view::npos) {
        return {};
    }
    return CommentReader(file).Read();
}

std::size_t HideIgnored(const Configuration& configuration, const RuleLevels& levels,
                        std::vector<Finding>& findings)
{
    Comments comments;
    for (const SourceFile& file : configuration.tree.Files()) {
        comments.Read(file);
    }
    if (configuration.replaceSource) {
        comments.Read(*configuration.replaceSource);
    }
    const std::size_t before = findings.size();
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                                  [&comments](const Finding& one) { return comments.Hides(one); }),
                   findings.end());
    const std::size_t hidden = before - findings.size();
    comments.AddUnused(levels, findings);
    return hidden;
}

} // namespace tool
