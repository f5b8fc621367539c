#include "tool/check/hide_ignored.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "tool/rules/rules.h"
#include "tool/rules/rules_check.h"
#include "tool/source/ignore_comments.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

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
