#include "tool/check/check_prefix_capture.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "tool/check/finding_at.h"
#include "tool/rules/rules_patterns.h"
#include "tool/text/name_list.h"

namespace tool {

namespace {

class PrefixCaptureCheck {
public:
    PrefixCaptureCheck(const Configuration& configuration, const std::vector<TableKey>& keys,
                       Findings& findings)
        : configuration_(configuration), tree_(configuration.tree), keys_(keys), findings_(findings)
    {}

    void Run()
    {
        for (const TableKey& key : keys_) {
            Visit(key);
        }
        CloseGroup();
        if (groups_ > kMostFindings) {
            AddSummary();
        }
    }

private:
    // A plain name that the key at hand begins with.
    struct Outer {
        const TableKey* key;
        bool isInDanger; // whether it may be taken for another one itself
    };
    struct Captured {
        const TableKey* key;
        const TableKey* by; // a shorter name whose dependencies it may get
    };

    void Visit(const TableKey& key)
    {
        while (!outer_.empty() && !BeginsWith(key.lead, outer_.back().key->lead)) {
            outer_.pop_back();
        }
        if (outer_.empty()) {
            CloseGroup();
            shortest_ = &key;
        }
        // Where the nearest name is in no danger, all that are shorter have its dependencies.
        const bool isInDanger = !outer_.empty() && (key.isPattern || outer_.back().isInDanger ||
                                                    *outer_.back().key->depends != *key.depends);
        if (isInDanger) {
            captured_.push_back({&key, CaptorOf(key)});
        }
        if (!key.isPattern) {
            outer_.push_back({&key, isInDanger});
        }
    }

    const TableKey* CaptorOf(const TableKey& key) const
    {
        for (const Outer& outer : outer_) {
            if (*outer.key->depends != *key.depends) {
                return outer.key;
            }
        }
        return outer_.front().key;
    }

    // All keys that begin with the shortest one have been seen.
    void CloseGroup()
    {
        if (!captured_.empty() && ++groups_ <= kMostFindings) {
            AddGroup();
        } else if (!captured_.empty() && groups_ == kMostFindings + 1) {
            next_ = shortest_;
        }
        captured_.clear();
    }

    void AddGroup()
    {
        const SourceEntry* entry = EntryOf(configuration_, *shortest_);
        if (entry == nullptr) {
            return;
        }
        std::vector<std::string_view> names;
        for (const Captured& captured : captured_) {
            names.emplace_back(*captured.key->name);
        }
        const std::string shortest = Quote(*shortest_->name);
        Finding finding = FindingAt(tree_, entry->visit, entry->key, kPrefixCapture,
                                    {fmt::format("{} also matches {}", shortest, QuoteSome(names)),
                                     EffectOf(captured_.front()),
                                     fmt::format("give {} a name that no other name begins with", shortest)});
        for (std::size_t i = 0; i < std::min(captured_.size(), kMostRelated); ++i) {
            if (const SourceEntry* other = EntryOf(configuration_, *captured_[i].key)) {
                finding.related.push_back({tree_.PositionOf(*other), Quote(names[i])});
            }
        }
        findings_.Add(std::move(finding));
    }

    static std::string EffectOf(const Captured& captured)
    {
        const std::string name = Quote(*captured.key->name);
        const std::string by = Quote(*captured.by->name);
        if (captured.key->isPattern) {
            return fmt::format("a request for a member of {} may be served by {} instead: which one is found "
                               "first is not defined",
                               name, by);
        }
        const std::string start =
            fmt::format("which of the two a request for {} finds is not defined: a start may use the "
                        "dependencies of {}, and so ",
                        name, by);
        const std::set<std::string>& used = *captured.by->depends;
        if (used.count(*captured.key->name) != 0) {
            return start + "wait for itself, which ends with PARSE_ERR_GRAPH_CYCLE";
        }
        for (const std::string& needed : *captured.key->depends) {
            if (used.count(needed) == 0) {
                return start + fmt::format("not wait for {}", Quote(needed));
            }
        }
        // Nothing is missing, so something is too much.
        const auto extra = std::find_if(used.begin(), used.end(), [&captured](const std::string& needed) {
            return captured.key->depends->count(needed) == 0;
        });
        return start + fmt::format("wait for {} without need", Quote(*extra));
    }

    void AddSummary()
    {
        if (const SourceEntry* entry = EntryOf(configuration_, *next_)) {
            findings_.Add(
                FindingAt(tree_, entry->visit, entry->key, kPrefixCapture,
                          {fmt::format("{} more names also match others, {} among them; {} are shown",
                                       groups_ - kMostFindings, Quote(*next_->name), kMostFindings),
                           "as for the others: requests for the longer names may get the wrong "
                           "dependencies",
                           "choose names of which none is the beginning of another one"}));
        }
    }

    const Configuration& configuration_;
    const SourceTree& tree_;
    const std::vector<TableKey>& keys_;
    Findings& findings_;
    std::vector<Outer> outer_;           // each begins with the one before it
    const TableKey* shortest_ = nullptr; // the first of outer_
    std::vector<Captured> captured_;     // all in danger that begin with it
    std::size_t groups_ = 0;             // with something captured
    const TableKey* next_ = nullptr;     // the first one that is not shown
};

} // namespace

void CheckPrefixCapture(const Configuration& configuration, const std::vector<TableKey>& keys,
                        Findings& findings)
{
    PrefixCaptureCheck(configuration, keys, findings).Run();
}

} // namespace tool
