#include "tool/check/check_walk.h"

#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "tool/rules/rules_tree.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::size_t kLimit = 199;
constexpr std::size_t kNearLimit = 180;

// A place in a file, however the file's path is spelled.
using ItemIdentity = std::tuple<FileIdentity, std::uint32_t, std::uint32_t>;

class WalkCheck {
public:
    WalkCheck(const Configuration& configuration, Findings& findings)
        : tree_(configuration.tree), findings_(findings)
    {}

    void Run()
    {
        const std::size_t count = tree_.Visits().size();
        isRepeat_.assign(count, false);
        for (std::size_t visit = 0; visit < count; ++visit) {
            if (tree_.IsLoaded(visit)) {
                CheckCycle(visit);
                CheckTwice(visit);
            }
        }
        CheckLimit();
    }

private:
    const FileIdentity& IdentityOf(std::size_t visit) const { return tree_.FileOf(visit).Identity(); }

    // Of a circle that is walked many times only the first closing is told.
    void CheckCycle(std::size_t number)
    {
        const Visit& visit = tree_.Visits()[number];
        if (visit.role == FileRole::STARTUP || visit.parent == kNone) {
            return;
        }
        std::size_t above = visit.parent;
        while (above != kNone && IdentityOf(above) != IdentityOf(number)) {
            above = tree_.Visits()[above].parent;
        }
        isRepeat_[number] = above != kNone || isRepeat_[visit.parent];
        if (above == kNone || isRepeat_[visit.parent]) {
            return;
        }
        hasCycle_ = true;
        findings_.Add(
            {&kIncludeCycle,
             tree_.PositionOf(visit.parent, visit.item),
             LengthOf(tree_.FileOf(visit.parent), visit.item),
             visit.parent,
             fmt::format("\"{}\" leads back to itself: {}", Printable(visit.path), Way(above, number)),
             "the library goes round until it has read 200 files and gives up: the device has no "
             "applications",
             "take this path out",
             {}});
    }

    // "sub.yaml:7 → base.yaml:3 → sub.yaml"
    std::string Way(std::size_t from, std::size_t to) const
    {
        std::string way = Printable(tree_.Visits()[to].path);
        for (std::size_t at = to; at != from; at = tree_.Visits()[at].parent) {
            const Visit& visit = tree_.Visits()[at];
            way = fmt::format("{}:{} → {}", Printable(tree_.Visits()[visit.parent].path),
                              visit.item.mark.line, way);
        }
        return way;
    }

    void CheckTwice(std::size_t number)
    {
        const Visit& visit = tree_.Visits()[number];
        if (isRepeat_[number] || visit.parent == kNone) {
            return;
        }
        const bool isStartup = visit.role == FileRole::STARTUP;
        const auto [first, isFirst] = firsts_.emplace(std::make_pair(isStartup, IdentityOf(number)), number);
        if (isFirst || ItemOf(first->second) == ItemOf(number)) {
            return;
        }
        const Visit& before = tree_.Visits()[first->second];
        findings_.Add(
            {&kFileListedTwice,
             tree_.PositionOf(visit.parent, visit.item),
             LengthOf(tree_.FileOf(visit.parent), visit.item),
             visit.parent,
             fmt::format("\"{}\" is named a second time", Printable(visit.path)),
             isStartup ? "the process manager gets every application of the file twice"
                       : "everything below the file is read twice, and every application there exists twice",
             "take one of the two out",
             {{tree_.PositionOf(before.parent, before.item), "first named here"}}});
    }

    ItemIdentity ItemOf(std::size_t number) const
    {
        const Visit& visit = tree_.Visits()[number];
        return {IdentityOf(visit.parent), visit.item.mark.line, visit.item.mark.column};
    }

    void CheckLimit()
    {
        std::size_t walked = 0;
        while (walked < tree_.Visits().size() && tree_.Visits()[walked].role != FileRole::STARTUP) {
            ++walked;
        }
        const Position top = {tree_.Visits()[0].path, {}};
        if (tree_.IsCutOff() && !hasCycle_) {
            const Visit& last = tree_.Visits().back();
            findings_.Add(
                {&kIncludeLimit,
                 tree_.PositionOf(last.parent, last.item),
                 LengthOf(tree_.FileOf(last.parent), last.item),
                 last.parent,
                 fmt::format("this is file number {} of the tree, which may have {} at most", walked, kLimit),
                 "the library gives up here: the device has no applications",
                 "move paths of startup files up into fewer sub-startup files",
                 {}});
            return;
        }
        if (!tree_.IsCutOff() && walked >= kNearLimit) {
            findings_.Add({&kIncludeLimitNear,
                           top,
                           0,
                           kNone,
                           fmt::format("the tree has {} top-level and sub-startup files; {} is the most",
                                       walked, kLimit),
                           "all is well today; with the 200th file the device would have no applications",
                           "move paths of startup files up into fewer sub-startup files",
                           {}});
        }
    }

    const SourceTree& tree_;
    Findings& findings_;
    std::vector<bool> isRepeat_; // below the closing of a circle, or that closing
    std::map<std::pair<bool, FileIdentity>, std::size_t> firsts_;
    bool hasCycle_ = false;
};

} // namespace

void CheckWalk(const Configuration& configuration, Findings& findings)
{
    WalkCheck(configuration, findings).Run();
}

} // namespace tool
