#include "tool/check/check_tree.h"

#include <cerrno>

#include <fmt/format.h>

#include "startplan/result_codes.h"
#include "tool/check/check_paths.h"
#include "tool/check/check_walk.h"
#include "tool/library/result_names.h"
#include "tool/rules/rules_tree.h"
#include "tool/source/nearest_file.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

// What is missing on the device where the library reads nothing from the visit's file.
std::string LossOf(FileRole role)
{
    switch (role) {
    case FileRole::TOP_LEVEL:
        return "the device has no applications";
    case FileRole::SUB_STARTUP:
        return "everything that this file names is missing on the device";
    default:
        return "none of the applications in this file exist on the device";
    }
}

std::string EffectOfUnreadable(const Configuration& configuration, const Visit& visit, int error)
{
    if (visit.role == FileRole::TOP_LEVEL) {
        return fmt::format("the library's result is {}: {}", ResultText(configuration.result),
                           LossOf(visit.role));
    }
    if (error == EACCES) {
        return fmt::format("the library gives everything up with {}: the device has no applications",
                           ResultText(PARSE_ERR_NO_PERMISSION));
    }
    return fmt::format("the library skips the file {}; {}",
                       visit.role == FileRole::STARTUP ? "and goes on" : "without a word",
                       LossOf(visit.role));
}

class TreeCheck {
public:
    TreeCheck(const Configuration& configuration, Findings& findings)
        : configuration_(configuration), tree_(configuration.tree), findings_(findings)
    {}

    void Run()
    {
        CheckReplaceFile();
        PathCheck paths(configuration_, findings_);
        for (std::size_t visit = 0; visit < tree_.Visits().size(); ++visit) {
            // A path that is never opened, or opened in vain because of its placeholder, is told as such.
            if (!paths.Check(visit)) {
                CheckFile(visit);
            }
        }
        paths.Finish();
        CheckWalk(configuration_, findings_);
        CheckResultOfWalk();
    }

private:
    void CheckFile(std::size_t number)
    {
        const Visit& visit = tree_.Visits()[number];
        const SourceFile& file = tree_.FileOf(number);
        if (file.State() == FileState::UNREADABLE) {
            AddUnreadable(number);
            return;
        }
        CheckContent(file, number, LossOf(visit.role));
    }

    void AddUnreadable(std::size_t number)
    {
        const Visit& visit = tree_.Visits()[number];
        const SourceFile& file = tree_.FileOf(number);
        const int error = file.ErrorNumber();
        const bool isMissingSub =
            visit.role == FileRole::SUB_STARTUP && (error == ENOENT || error == ENOTDIR);
        Finding finding;
        finding.rule = isMissingSub ? &kMissingSubStartup : &kUnreadableFile;
        finding.message = fmt::format("\"{}\" cannot be read: {}", Printable(visit.path), file.Error());
        finding.effect = EffectOfUnreadable(configuration_, visit, error);
        finding.help =
            HelpForUnreadable(configuration_.request.device.root, visit.path,
                              visit.parent == kNone ? "" : tree_.Visits()[visit.parent].path, error);
        finding.position = {visit.path, {}};
        if (visit.parent != kNone) {
            finding.position = tree_.PositionOf(visit.parent, visit.item);
            finding.length = LengthOf(tree_.FileOf(visit.parent), visit.item);
            finding.visit = visit.parent;
        }
        findings_.Add(std::move(finding));
    }

    // What is wrong with a file that could be opened. `number` is kNone for the replace file.
    void CheckContent(const SourceFile& file, std::size_t number, const std::string& loss)
    {
        const auto add = [&](const Rule& rule, Mark mark, std::string message, std::string effect,
                             std::string help) {
            findings_.Add({&rule,
                           {file.Path(), mark},
                           0,
                           number,
                           std::move(message),
                           std::move(effect),
                           std::move(help),
                           {}});
        };
        if (file.State() == FileState::NOT_YAML) {
            add(kNotYaml, file.ErrorMark(), "this is not YAML: " + Printable(file.Error()),
                "the library skips the whole file; " + loss,
                file.LineFrom(file.ErrorMark()).substr(0, 1) == "\t"
                    ? "indent with spaces, not with a tab"
                    : "correct the file at or a little before this place");
            return;
        }
        if (file.State() == FileState::EMPTY) {
            add(kEmptyFile, {}, "the file is empty", "the library skips it; " + loss,
                "fill the file, or take its path out of the list");
            return;
        }
        if (file.Kind(file.Root()) != NodeKind::MAPPING) {
            add(kRootNotMapping, file.Root().mark,
                fmt::format("the file's root is a {}, not a mapping",
                            file.Kind(file.Root()) == NodeKind::SEQUENCE ? "list" : "text"),
                "the library finds nothing in it; " + loss,
                "begin each line of the root with a name and a colon");
        }
        if (const auto extra = file.ExtraDocument()) {
            add(kExtraDocument, *extra, "a second document begins here",
                "the library does not read on: what stands from here on does not exist on the device",
                "take this line out, or give each document a file of its own");
        }
    }

    void CheckReplaceFile()
    {
        if (!configuration_.replaceSource) {
            return;
        }
        const SourceFile& file = *configuration_.replaceSource;
        const std::string loss = "no placeholder is replaced from it";
        if (file.State() == FileState::UNREADABLE) {
            findings_.Add(
                {&kUnreadableFile,
                 {file.Path(), {}},
                 0,
                 kNone,
                 fmt::format("\"{}\" cannot be read: {}", Printable(file.Path()), file.Error()),
                 loss,
                 HelpForUnreadable(configuration_.request.device.root, file.Path(), "", file.ErrorNumber()),
                 {}});
            return;
        }
        CheckContent(file, kNone, loss);
        if (file.IsLoaded() && file.Kind(file.Root()) == NodeKind::MAPPING && !HasReplaceData(file)) {
            const NodeUse* key = file.FindKey(file.Root(), "cfgmgr_env");
            findings_.Add({&kNoReplaceData,
                           {file.Path(), key == nullptr ? Mark() : key->mark},
                           key == nullptr ? 0 : LengthOf(file, *key),
                           kNone,
                           key == nullptr ? "the replace data have no key \"cfgmgr_env\""
                                          : "\"cfgmgr_env\" holds no values",
                           loss,
                           "write \"NAME: value\" lines below \"cfgmgr_env:\"",
                           {}});
        }
    }

    static bool HasReplaceData(const SourceFile& file)
    {
        const NodeUses pairs = file.Pairs(file.Root());
        for (std::size_t i = 0; i + 1 < pairs.size; i += 2) {
            if (file.Text(pairs[i]) == "cfgmgr_env" && file.Pairs(pairs[i + 1]).size != 0) {
                return true;
            }
        }
        return false;
    }

    void CheckResultOfWalk()
    {
        const bool isTopReadable = tree_.IsLoaded(0);
        if (configuration_.result != PARSE_ERR_NO_STARTUP_FILE || !isTopReadable) {
            return;
        }
        findings_.Add({&kNoStartupFile,
                       {tree_.Visits()[0].path, {}},
                       0,
                       kNone,
                       "no file of this tree names a startup file",
                       fmt::format("the library's result is {}: {}", ResultText(configuration_.result),
                                   LossOf(FileRole::TOP_LEVEL)),
                       "name the files that hold the applications in \"startup_path_list\"",
                       {}});
    }

    const Configuration& configuration_;
    const SourceTree& tree_;
    Findings& findings_;
};

} // namespace

void CheckTree(const Configuration& configuration, Findings& findings)
{
    TreeCheck(configuration, findings).Run();
}

} // namespace tool
