#include "tool/check/keyed_mapping.h"

#include <set>
#include <utility>

namespace tool {

namespace {

// Takes each mapping of the files once.
class Collector {
public:
    explicit Collector(const Configuration& configuration) : configuration_(configuration) {}

    std::vector<KeyedMapping> Collect()
    {
        if (const auto& replace = configuration_.replaceSource; replace && replace->IsLoaded()) {
            Add({FileKind::REPLACE, &*replace, kNone, kNone, replace->Root()});
        }
        const SourceTree& tree = configuration_.tree;
        for (std::size_t visit = 0; visit < tree.Visits().size(); ++visit) {
            if (tree.Visits()[visit].role != FileRole::STARTUP && tree.IsLoaded(visit)) {
                const SourceFile& file = tree.FileOf(visit);
                Add({FileKind::TOP_LEVEL, &file, visit, kNone, file.Root()});
            }
        }
        for (std::size_t i = 0; i < tree.Entries().size(); ++i) {
            const SourceEntry& entry = tree.Entries()[i];
            if (!IsOwnEntry(configuration_, i)) {
                Add({FileKind::STARTUP, &tree.FileOf(entry), entry.visit, i, entry.value});
            }
        }
        return std::move(mappings_);
    }

private:
    void Add(const KeyedMapping& mapping)
    {
        const bool isMapping = mapping.file->Kind(mapping.node) == NodeKind::MAPPING;
        if (isMapping && known_.insert({mapping.file, mapping.node.node, mapping.kind}).second) {
            mappings_.push_back(mapping);
        }
    }

    const Configuration& configuration_;
    std::vector<KeyedMapping> mappings_;
    std::set<std::tuple<const SourceFile*, std::uint32_t, FileKind>> known_;
};

bool HasProgram(const SourceFile& file, const NodeUse& mapping)
{
    const NodeUse* program = file.Find(mapping, "bin_path");
    return program != nullptr && !file.Text(*program).empty();
}

} // namespace

std::vector<KeyedMapping> KeyedMappings(const Configuration& configuration)
{
    return Collector(configuration).Collect();
}

bool IsIncomplete(const Configuration& configuration, std::size_t entry)
{
    const EntryState state = configuration.entryStates[entry];
    if (state != EntryState::UNREAD) {
        return state == EntryState::INCOMPLETE;
    }
    const SourceEntry& source = configuration.tree.Entries()[entry];
    const SourceFile& file = configuration.tree.FileOf(source);
    return file.Text(source.key).empty() || !HasProgram(file, source.value);
}

bool IsOwnEntry(const Configuration& configuration, std::size_t entry)
{
    const SourceEntry& source = configuration.tree.Entries()[entry];
    return IsOwnKey(configuration.tree.FileOf(source).Text(source.key)) && IsIncomplete(configuration, entry);
}

Finding FindingAt(const KeyedMapping& mapping, const Rule& rule, const NodeUse& use, std::string message,
                  std::string effect, std::string help)
{
    Finding finding;
    finding.rule = &rule;
    finding.position = mapping.PositionOf(use);
    finding.length = LengthOf(*mapping.file, use);
    finding.visit = mapping.visit;
    finding.message = std::move(message);
    finding.effect = std::move(effect);
    finding.help = std::move(help);
    return finding;
}

} // namespace tool
