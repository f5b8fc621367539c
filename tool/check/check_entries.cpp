#include "tool/check/check_entries.h"

#include <string_view>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/check/check_keys.h"
#include "tool/check/keyed_mapping.h"
#include "tool/keys/library_values.h"
#include "tool/rules/rules_entries.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

constexpr std::uint32_t kNobody = 4294967295; // the uid that no application can have

class EntryCheck {
public:
    EntryCheck(const Configuration& configuration, Findings& findings)
        : configuration_(configuration), findings_(findings), values_(configuration)
    {
        for (std::size_t i = 0; i < configuration.tree.Entries().size(); ++i) {
            if (!IsIncomplete(configuration, i)) {
                const std::string_view name = NameOf(i);
                firstOfName_.emplace(name, i);
                lastOfName_[name] = i;
            }
        }
    }

    void Check()
    {
        for (std::size_t i = 0; i < configuration_.tree.Entries().size(); ++i) {
            if (IsOwnEntry(configuration_, i)) {
                continue;
            }
            const SourceEntry& source = configuration_.tree.Entries()[i];
            const SourceFile& file = configuration_.tree.FileOf(source);
            const KeyedMapping entry{FileKind::STARTUP, &file, source.visit, i, source.value};
            if (file.Kind(source.value) != NodeKind::MAPPING) {
                AddNoMapping(entry, source.key);
            } else if (IsIncomplete(configuration_, i)) {
                CheckCompleteness(entry, source.key);
            } else {
                CheckName(entry, source.key);
                CheckFlag(entry, source.key);
            }
        }
    }

private:
    void AddNoMapping(const KeyedMapping& entry, const NodeUse& name);
    void CheckCompleteness(const KeyedMapping& entry, const NodeUse& name);
    void CheckName(const KeyedMapping& entry, const NodeUse& name);
    void CheckFlag(const KeyedMapping& entry, const NodeUse& name);
    std::string_view NameOf(std::size_t entry) const
    {
        const SourceEntry& source = configuration_.tree.Entries()[entry];
        return configuration_.tree.FileOf(source).Text(source.key);
    }

    const Configuration& configuration_;
    Findings& findings_;
    LibraryValues values_;
    // Of the complete entries, the first and the last with each name.
    std::unordered_map<std::string_view, std::size_t> firstOfName_;
    std::unordered_map<std::string_view, std::size_t> lastOfName_;
};

std::string SkippedEffect(std::string_view name)
{
    if (name.empty()) {
        return "the entry is skipped";
    }
    return fmt::format("the entry is skipped: there is no application {}, and what depends on it is dropped",
                       Quoted(name));
}

void EntryCheck::AddNoMapping(const KeyedMapping& entry, const NodeUse& name)
{
    const std::string_view text = entry.file->Text(name);
    const bool isList = entry.file->Kind(entry.node) == NodeKind::SEQUENCE;
    const bool isEmpty = !isList && entry.file->Text(entry.node).empty();
    const bool isMisplaced = FindKey(FileKind::TOP_LEVEL, text) != nullptr;
    findings_.Add(
        FindingAt(entry, kEntryNotMapping, name,
                  isEmpty ? fmt::format("the entry {} is empty", Quoted(text))
                          : fmt::format("the entry {} is {}, and a mapping of keys is wanted", Quoted(text),
                                        isList ? "a list" : "a single value"),
                  SkippedEffect(text),
                  isMisplaced ? "move it to a top-level or sub-startup file: here every key is an application"
                              : "write its keys below the name, indented: \"bin_path\" at least"));
}

void EntryCheck::CheckCompleteness(const KeyedMapping& entry, const NodeUse& name)
{
    const SourceFile& file = *entry.file;
    const std::string_view text = file.Text(name);
    const auto add = [this, &entry, text](const NodeUse& use, std::string message, const char* help) {
        findings_.Add(FindingAt(entry, kIncompleteEntry, use, std::move(message), SkippedEffect(text), help));
    };
    if (text.empty()) {
        add(name, "an entry without a name", "give it a name");
    }
    const NodeUse* program = file.FindKey(entry.node, "bin_path");
    if (program == nullptr) {
        add(name, fmt::format("{} has no \"bin_path\"", Quoted(text)),
            "write \"bin_path\" and the program behind it");
    } else if (file.Kind(program[1]) != NodeKind::SCALAR) {
        add(*program, fmt::format("the \"bin_path\" of {} is no single value", Quoted(text)),
            "write the program's path alone");
    } else if (file.Text(program[1]).empty()) {
        add(*program, fmt::format("the \"bin_path\" of {} is empty", Quoted(text)),
            "write the program behind it");
    }
    const NodeUse* uid = file.Find(entry.node, "uid");
    if (uid != nullptr && values_.Read(entry.entry, *FindKey(FileKind::STARTUP, "uid")) == kNobody) {
        add(*uid, fmt::format("the uid of {} reads as {}, which nobody can have", Quoted(text), kNobody),
            "write the number of a user");
    }
}

// A file that is read twice brings each entry twice; that is another rule's business.
void EntryCheck::CheckName(const KeyedMapping& entry, const NodeUse& name)
{
    const std::string_view text = entry.file->Text(name);
    const SourceTree& tree = configuration_.tree;
    const SourceEntry& first = tree.Entries()[firstOfName_.at(text)];
    if (tree.FileOf(first).Identity() == entry.file->Identity() && first.key.mark.line == name.mark.line &&
        first.key.mark.column == name.mark.column) {
        return;
    }
    Finding finding =
        FindingAt(entry, kDuplicateApplication, name, fmt::format("{} is defined twice", Quoted(text)),
                  fmt::format("both entries stay in the list of applications; for the order of starting and "
                              "stopping only the \"depends\" at {} counts",
                              Printable(ToText(tree.PositionOf(tree.Entries()[lastOfName_.at(text)])))),
                  "rename one of them or take it out");
    finding.related.push_back({tree.PositionOf(first), "first defined here"});
    findings_.Add(std::move(finding));
}

void EntryCheck::CheckFlag(const KeyedMapping& entry, const NodeUse& name)
{
    const std::string text(entry.file->Text(name));
    const bool isPattern = configuration_.library.IsDynamicPara(text);
    const NodeUse* flag = entry.file->FindKey(entry.node, "isDynamicPara");
    const bool isSet =
        flag != nullptr && values_.Read(entry.entry, *FindKey(FileKind::STARTUP, "isDynamicPara")) == true;
    if (isSet == isPattern) {
        return;
    }
    if (isPattern) {
        findings_.Add(FindingAt(entry, kFlagDisagrees, flag == nullptr ? name : *flag,
                                fmt::format("the name {} is a pattern, and \"isDynamicPara\" is {}",
                                            Quoted(text), flag == nullptr ? "left out" : "false"),
                                "the library matches by the brackets and does not look at the flag; the "
                                "process manager is told that this is one plain application",
                                "write \"isDynamicPara: true\""));
        return;
    }
    findings_.Add(
        FindingAt(entry, kFlagDisagrees, *flag,
                  fmt::format("\"isDynamicPara\" is true, and the name {} is no pattern", Quoted(text)),
                  "the process manager is told that the entry stands for a family of applications, which its "
                  "name does not describe",
                  "put what varies in the name into <...>, or take the flag out"));
}

} // namespace

void CheckEntries(const Configuration& configuration, Findings& findings)
{
    EntryCheck(configuration, findings).Check();
    CheckKeys(configuration, findings);
}

} // namespace tool
