#include "tool/check/check_missing.h"

#include <algorithm>
#include <optional>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "tool/check/finding_at.h"
#include "tool/check/meant_names.h"
#include "tool/check/sufferers.h"
#include "tool/rules/rules_dependencies.h"
#include "tool/text/name_list.h"

namespace tool {

namespace {

class MissingCheck {
public:
    MissingCheck(const Configuration& configuration, const DependencyIndex& index, Findings& findings)
        : configuration_(configuration), tree_(configuration.tree), index_(index), findings_(findings),
          meant_(index), sufferers_(index)
    {}

    void Run()
    {
        for (std::size_t name = 0; name < index_.Size(); ++name) {
            if (index_.IsDropped(name)) {
                CheckName(name);
            }
        }
    }

private:
    void CheckName(std::size_t name)
    {
        name_ = index_.Names()[name];
        entry_ = &index_.EntryOf(name);
        const SuffererSearch::Result sufferers = sufferers_.Find({name});
        effect_ = fmt::format("{} is dropped: it is not started, and no request finds it", Quote(name_));
        if (!sufferers.names.empty()) {
            effect_ +=
                fmt::format("; who needs it waits in vain: {}", QuoteSome(sufferers.names, sufferers.isCut));
        }
        for (const DependencyIndex::Dependency& dependency : index_.DependenciesOf(name)) {
            if (dependency.target == kNone && IsMissing(index_.Text(name, dependency))) {
                findings_.Add(Examine(index_.Text(name, dependency), *dependency.item));
            }
        }
    }

    // By the library's own line.
    bool IsMissing(std::string_view dependency) const
    {
        const auto wanted = std::make_pair(name_, dependency);
        const auto& missing = configuration_.missing;
        const auto found = std::lower_bound(
            missing.begin(), missing.end(), wanted, [](const MissingDependency& one, const auto& other) {
                return std::make_pair(std::string_view(one.application), std::string_view(one.dependency)) <
                       other;
            });
        return found != missing.end() && found->application == name_ && found->dependency == dependency;
    }

    Finding Examine(std::string_view missing, const NodeUse& item)
    {
        if (missing.empty()) {
            return ExamineEmpty(item);
        }
        if (const std::size_t pattern = meant_.PatternFor(missing); pattern != kNone) {
            return ExamineInstance(missing, item, pattern);
        }
        if (const std::size_t near = meant_.NearMissOf(missing); near != kNone) {
            return Make(
                item, kDependencySpelling,
                fmt::format("{} depends on {}, which is not configured, but {} is", Quote(name_),
                            Quote(missing), Quote(index_.Names()[near])),
                fmt::format("write {}: names are compared letter by letter", Quote(index_.Names()[near])));
        }
        return ExamineMissing(missing, item);
    }

    Finding ExamineEmpty(const NodeUse& item) const
    {
        const bool isText = tree_.FileOf(*entry_).Kind(item) == NodeKind::SCALAR;
        return Make(item, kEmptyDependency,
                    isText
                        ? fmt::format("{} depends on an empty name", Quote(name_))
                        : fmt::format("{} depends on something that is no text: it counts as an empty name",
                                      Quote(name_)),
                    isText ? "write the name, or take the item out" : "write one name for each item");
    }

    Finding ExamineInstance(std::string_view missing, const NodeUse& item, std::size_t pattern) const
    {
        const std::string family = Quote(index_.Names()[pattern]);
        Finding finding = Make(item, kDependencyIsPatternInstance,
                               fmt::format("{} depends on {}, which only the pattern {} stands for",
                                           Quote(name_), Quote(missing), family),
                               fmt::format("depend on the whole family, {}, or give {} an entry of its own",
                                           family, Quote(missing)));
        finding.related.push_back({tree_.PositionOf(index_.EntryOf(pattern)),
                                   "the pattern; dependencies are compared with it as it is written"});
        return finding;
    }

    Finding ExamineMissing(std::string_view missing, const NodeUse& item)
    {
        const std::string depends = fmt::format("{} depends on {}, ", Quote(name_), Quote(missing));
        const std::vector<std::size_t>& skipped = tree_.EntriesNamed(std::string(missing));
        if (!skipped.empty()) {
            Finding finding = Make(item, kMissingDependency, depends + "whose entry is skipped",
                                   fmt::format("complete the entry of {}", Quote(missing)));
            finding.related.push_back(
                {tree_.PositionOf(tree_.Entries()[skipped.back()]), "the entry, which is incomplete"});
            return finding;
        }
        const std::string cut = NameCutByComma(item);
        const std::size_t nearest = cut.empty() ? meant_.NearestTo(missing) : kNone;
        const std::string help =
            !cut.empty()       ? fmt::format("put {} in quotes: between [ and ] a comma ends an item", cut)
            : nearest != kNone ? fmt::format("did you mean {}?", Quote(index_.Names()[nearest]))
                               : fmt::format("configure {}, or take it out of \"depends\"", Quote(missing));
        return Make(item, kMissingDependency, depends + "which is not configured", help);
    }

    // A pattern without quotes, [lidar_<1,2>], is two items. The configured name that the item was a part
    // of, or nothing.
    std::string NameCutByComma(const NodeUse& item) const
    {
        constexpr std::ptrdiff_t kMostParts = 16;
        const SourceFile& file = tree_.FileOf(*entry_);
        const NodeUses items = file.Items(*file.Find(entry_->value, "depends"));
        const NodeUse* first = &item;
        const NodeUse* stop = items.end() - first > kMostParts ? first + kMostParts : items.end();
        for (const NodeUse* begin = first;; --begin) {
            if (file.Text(*begin).find('<') != std::string_view::npos) {
                return Joined(file, begin, stop);
            }
            if (begin == items.begin() || first - begin >= kMostParts) {
                return "";
            }
        }
    }

    std::string Joined(const SourceFile& file, const NodeUse* begin, const NodeUse* end) const
    {
        std::string text;
        for (const NodeUse* use = begin; use != end; ++use) {
            text += (use == begin ? "" : ",") + std::string(file.Text(*use));
            if (use != begin && index_.Find(text) != kNone) {
                return Quote(text);
            }
        }
        return "";
    }

    Finding Make(const NodeUse& item, const Rule& rule, std::string message, std::string help) const
    {
        return FindingAt(tree_, entry_->visit, item, rule, {std::move(message), effect_, std::move(help)});
    }

    const Configuration& configuration_;
    const SourceTree& tree_;
    const DependencyIndex& index_;
    Findings& findings_;
    MeantNames meant_;
    SuffererSearch sufferers_;

    // Of the application at hand.
    std::string_view name_;
    const SourceEntry* entry_ = nullptr;
    std::string effect_;
};

} // namespace

void CheckMissing(const Configuration& configuration, const DependencyIndex& index, Findings& findings)
{
    if (!configuration.missing.empty()) {
        MissingCheck(configuration, index, findings).Run();
    }
}

} // namespace tool
