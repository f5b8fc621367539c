#include "tool/source/source_tree.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "startplan/parser.h"
#include "tool/library/log_collector.h"
#include "tool/source/file_guard.h"

namespace tool {

namespace {

// The library's limit, at which it gives the whole tree up. A test holds that both agree.
constexpr std::size_t kMostWalkedFiles = 200;
// Of a very long chain of namings so many links are shown at either end.
constexpr std::size_t kChainEnd = 4;

} // namespace

class SourceTreeWalk {
public:
    SourceTreeWalk(SourceTree& tree, const std::map<std::string, std::string>& replaceData)
        : tree_(tree), replaceData_(replaceData)
    {}

    void Run(const std::string& top);

private:
    void WalkLists(std::size_t visit);
    void VisitStartupFile(Visit startup);
    void AddEntries(std::size_t visit);
    std::size_t AddVisit(Visit visit);
    std::size_t FileAt(const std::string& path);
    void Refuse(Position position, std::string reason, std::size_t visit);
    void RefuseFile(std::size_t visit, const std::string& reason, Mark mark);
    std::vector<Visit> PathsUnder(std::size_t visit, const char* key, FileRole role) const;

    SourceTree& tree_;
    const std::map<std::string, std::string>& replaceData_;
    const ProcMgr::YamlParser parser_;
    std::vector<Visit> pending_;
    std::vector<Visit> startups_;
    std::unordered_map<std::string, std::size_t> fileByPath_;
    std::size_t bytes_ = 0;
};

void SourceTreeWalk::Run(const std::string& top)
{
    pending_.push_back({FileRole::TOP_LEVEL, top, kNone, kNone, {}});
    while (!pending_.empty() && !tree_.isCutOff_) {
        Visit next = std::move(pending_.back());
        pending_.pop_back();
        WalkLists(AddVisit(std::move(next)));
        tree_.isCutOff_ = tree_.visits_.size() == kMostWalkedFiles;
    }
    if (tree_.isCutOff_) {
        return;
    }
    for (Visit& startup : startups_) {
        VisitStartupFile(std::move(startup));
    }
}

void SourceTreeWalk::WalkLists(std::size_t visit)
{
    if (!tree_.IsLoaded(visit)) {
        return;
    }
    for (Visit& startup : PathsUnder(visit, "startup_path_list", FileRole::STARTUP)) {
        startups_.push_back(std::move(startup));
    }
    std::vector<Visit> subs = PathsUnder(visit, "sub_startup", FileRole::SUB_STARTUP);
    std::move(subs.rbegin(), subs.rend(), std::back_inserter(pending_));
}

void SourceTreeWalk::VisitStartupFile(Visit startup)
{
    if (FindEndlessPlaceholder(startup.path, replaceData_)) {
        tree_.refusals_.push_back({tree_.PositionOf(startup.parent, startup.item),
                                   "\"${}\" in this path: the library would try to replace it for ever and "
                                   "the device would not boot",
                                   startup.parent, RefusalKind::EMPTY_PLACEHOLDER});
        return;
    }
    parser_.ReplaceByMatchDataInPath(startup.path, replaceData_);
    if (!parser_.CheckInputPath(startup.path)) {
        tree_.visits_.push_back(std::move(startup));
        return;
    }
    AddEntries(AddVisit(std::move(startup)));
}

void SourceTreeWalk::AddEntries(std::size_t visit)
{
    if (!tree_.IsLoaded(visit)) {
        return;
    }
    const SourceFile& file = tree_.FileOf(visit);
    const NodeUses pairs = file.Pairs(file.Root());
    for (std::size_t i = 0; i + 1 < pairs.size; i += 2) {
        tree_.entriesByName_[std::string(file.Text(pairs[i]))].push_back(tree_.entries_.size());
        tree_.entries_.push_back({visit, pairs[i], pairs[i + 1]});
    }
}

std::size_t SourceTreeWalk::AddVisit(Visit visit)
{
    visit.file = FileAt(visit.path);
    const std::size_t number = tree_.visits_.size();
    tree_.visits_.push_back(std::move(visit));
    const SourceFile& file = tree_.FileOf(number);
    bytes_ += file.Bytes();
    if (file.State() == FileState::REFUSED) {
        RefuseFile(number, file.Error(), file.ErrorMark());
    } else if (bytes_ > kMostTreeBytes && bytes_ - file.Bytes() <= kMostTreeBytes) {
        RefuseFile(number,
                   fmt::format("would make the tree larger than {} bytes, which is the most that is read",
                               kMostTreeBytes),
                   {});
    }
    return number;
}

std::size_t SourceTreeWalk::FileAt(const std::string& path)
{
    const auto [known, isNew] = fileByPath_.emplace(path, tree_.files_.size());
    if (isNew) {
        tree_.files_.push_back(SourceFile::Read(path));
    }
    return known->second;
}

void SourceTreeWalk::Refuse(Position position, std::string reason, std::size_t visit)
{
    tree_.refusals_.push_back({std::move(position), std::move(reason), visit, RefusalKind::FILE});
}

// At the mark in the file, or, for the file as a whole, where it is named.
void SourceTreeWalk::RefuseFile(std::size_t visit, const std::string& reason, Mark mark)
{
    const Visit& refused = tree_.visits_[visit];
    if (mark.line != 0 || refused.parent == kNone) {
        Refuse({refused.path, mark}, "the file " + reason, visit);
        return;
    }
    Refuse(tree_.PositionOf(refused.parent, refused.item), fmt::format("\"{}\" {}", refused.path, reason),
           visit);
}

std::vector<Visit> SourceTreeWalk::PathsUnder(std::size_t visit, const char* key, FileRole role) const
{
    std::vector<Visit> paths;
    const SourceFile& file = tree_.FileOf(visit);
    const NodeUse* list = file.Find(file.Root(), key);
    if (list == nullptr) {
        return paths;
    }
    for (const NodeUse& item : file.Items(*list)) {
        paths.push_back({role, std::string(file.Text(item)), kNone, visit, item});
    }
    return paths;
}

SourceTree SourceTree::Read(const std::string& top, const std::map<std::string, std::string>& replaceData)
{
    const LogCollector unheard; // the path check logs, and will again when the library reads the tree
    SourceTree tree;
    SourceTreeWalk(tree, replaceData).Run(top);
    return tree;
}

bool SourceTree::IsLoaded(std::size_t visit) const
{
    return visits_[visit].file != kNone && FileOf(visit).IsLoaded();
}

Position SourceTree::PositionOf(std::size_t visit, const NodeUse& use) const
{
    return {visits_[visit].path, use.mark};
}

Position SourceTree::PositionOfDependency(const SourceEntry& entry, std::string_view name) const
{
    const SourceFile& file = FileOf(entry);
    if (const NodeUse* depends = file.Find(entry.value, "depends")) {
        for (const NodeUse& item : file.Items(*depends)) {
            if (file.Text(item) == name) {
                return PositionOf(entry.visit, item);
            }
        }
    }
    return PositionOf(entry);
}

std::string SourceTree::ChainTo(std::size_t visit) const
{
    std::vector<std::string> links = {visits_[visit].path};
    for (std::size_t at = visit; visits_[at].parent != kNone; at = visits_[at].parent) {
        links.push_back(fmt::format("{}:{}", visits_[visits_[at].parent].path, visits_[at].item.mark.line));
    }
    std::reverse(links.begin(), links.end());
    if (links.size() > 2 * kChainEnd + 1) {
        const std::size_t more = links.size() - 2 * kChainEnd;
        links[kChainEnd] = fmt::format("… {} more …", more);
        const auto cut = links.begin() + kChainEnd + 1;
        links.erase(cut, cut + static_cast<std::ptrdiff_t>(more) - 1);
    }
    return fmt::format("{}", fmt::join(links, " → "));
}

const std::vector<std::size_t>& SourceTree::EntriesNamed(const std::string& name) const
{
    static const std::vector<std::size_t> kNoEntries;
    const auto found = entriesByName_.find(name);
    return found == entriesByName_.end() ? kNoEntries : found->second;
}

std::string ToText(const Position& position)
{
    if (position.mark.line == 0) {
        return position.file;
    }
    return fmt::format("{}:{}:{}", position.file, position.mark.line, position.mark.column);
}

} // namespace tool
