#include "tool/source/source_tree.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "startplan/result_codes.h"
#include "tests/support/temporary_tree.h"
#include "tool/configuration/configuration.h"

namespace {

using test_support::TemporaryTree;
using tool::Configuration;
using tool::EntryState;
using tool::LoadConfiguration;

// Each record has its entry, and the entry's position is where the name stands in the file.
void ExpectPositionsToFit(const Configuration& configuration)
{
    for (std::size_t i = 0; i < configuration.apps.size(); ++i) {
        const std::string& name = configuration.apps[i].GetAppName();
        const tool::SourceEntry* entry = configuration.EntryOf(i);
        ASSERT_NE(nullptr, entry) << name;
        const tool::SourceFile& file = configuration.tree.FileOf(*entry);
        EXPECT_EQ(configuration.apps[i].GetCfgPath(), file.Path());
        const std::string line(file.Line(entry->key.mark.line));
        const std::size_t quote = line.at(entry->key.mark.column - 1) == '"' ? 1 : 0;
        EXPECT_EQ(name, line.substr(entry->key.mark.column - 1 + quote, name.size()));
    }
}

TEST(SourceTreeTest, TheSampleTreesRecordsAllHaveTheirPlace)
{
    std::filesystem::current_path(STARTPLAN_SOURCE_DIR);
    const Configuration configuration =
        LoadConfiguration({"examples/vehicle/top.yaml", "examples/vehicle/replace.yaml", {}});

    EXPECT_EQ(0U, configuration.result);
    EXPECT_GT(configuration.apps.size(), 100U);
    ExpectPositionsToFit(configuration);
}

TEST(SourceTreeTest, EntriesKeepTheirPlaceWhenOthersAreLeftOut)
{
    const TemporaryTree tree;
    const std::string apps = tree.Write("apps.yaml", "a: {uid: 1}\n"
                                                     "b: {bin_path: /b}\n"
                                                     "c: {bin_path: /c, depends: [gone]}\n"
                                                     "b: {bin_path: /b2}\n"
                                                     "\"\": {bin_path: /x}\n"
                                                     "d: {bin_path: /d}\n"
                                                     "e: no mapping\n");
    const std::string top = tree.Write("top.yaml", "startup_path_list: [" + apps + ", " + apps + "]\n");

    const Configuration configuration = LoadConfiguration({top, "", {}});

    EXPECT_EQ(PARSE_ERR_DEPEND_NOT_FOUND, configuration.result);
    const std::vector<EntryState> once = {EntryState::INCOMPLETE, EntryState::KEPT,       EntryState::DROPPED,
                                          EntryState::KEPT,       EntryState::INCOMPLETE, EntryState::KEPT,
                                          EntryState::INCOMPLETE};
    std::vector<EntryState> twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(twice, configuration.entryStates);
    EXPECT_EQ(6U, configuration.apps.size());
    ExpectPositionsToFit(configuration);
    ASSERT_EQ(1U, configuration.missing.size());
    EXPECT_EQ("c", configuration.missing[0].application);
    EXPECT_EQ(apps + ":3:29",
              ToText(configuration.tree.PositionOfDependency(configuration.tree.Entries()[2], "gone")));
}

TEST(SourceTreeTest, TellsTheChainOfFiles)
{
    const TemporaryTree tree;
    const std::string apps = tree.Write("apps.yaml", "a: {bin_path: /a}\n");
    const std::string sub = tree.Write("sub.yaml", "\n\nstartup_path_list:\n  - " + apps + "\n");
    const std::string top = tree.Write("top.yaml", "sub_startup:\n  - " + sub + "\n");

    const tool::SourceTree read = tool::SourceTree::Read(top, {});

    ASSERT_EQ(3U, read.Visits().size());
    EXPECT_EQ(top + ":2 → " + sub + ":4 → " + apps, read.ChainTo(2));
    EXPECT_EQ(tool::FileRole::STARTUP, read.Visits()[2].role);
}

// The library gives up at the same file; were the walk shorter, it would miss files that the library reads.
TEST(SourceTreeTest, IsCutOffWhereTheLibraryGivesUp)
{
    const TemporaryTree tree;
    const std::string apps = tree.Write("apps.yaml", "a: {bin_path: /a}\n");
    for (const int subs : {198, 199}) {
        std::string text = "startup_path_list: [" + apps + "]\nsub_startup:\n";
        for (int i = 0; i < subs; ++i) {
            text += "  - " + tree.Path("absent.yaml") + "\n";
        }
        const std::string top = tree.Write("top.yaml", text);

        const Configuration configuration = LoadConfiguration({top, "", {}});

        EXPECT_EQ(subs == 199, configuration.tree.IsCutOff());
        EXPECT_EQ(subs == 199 ? PARSE_ERR_TOO_MANY_SUB_STARTUP : 0U, configuration.result);
    }
}

TEST(SourceTreeTest, OnlyTheFirstDocumentCountsAndASecondOneIsSeen)
{
    const TemporaryTree tree;
    const std::string apps = tree.Write("apps.yaml", "a: {bin_path: /a}\n---\nb: {bin_path: /b}\n");
    const std::string top = tree.Write("top.yaml", "startup_path_list: [" + apps + "]\n");

    const Configuration configuration = LoadConfiguration({top, "", {}});

    ASSERT_EQ(1U, configuration.apps.size());
    ASSERT_TRUE(configuration.tree.FileOf(1).ExtraDocument().has_value());
    EXPECT_EQ(2U, configuration.tree.FileOf(1).ExtraDocument()->line);
}

// Files that libyaml reads or refuses for different reasons: the walk and the library must say the same.
TEST(SourceTreeTest, ReadsAndRefusesTheSameFilesAsTheLibrary)
{
    const char* const files[] = {
        "a: {bin_path: /a}\n",
        "",
        "---\n",
        "# only a comment\n",
        "a: [1\n",
        "a: &x 1\nb: &x 2\n",
        "a: *no\n",
        "a: {bin_path: /a}\n...\n%bad\n",
        "a: {bin_path: /a}\n---\n[",
        "\xEF\xBB\xBF"
        "a: {bin_path: /a}\n",
        "a: \"\xFF\"\n",
        "[a, b]\n",
        "text\n",
        "a: &x {bin_path: /a, env: *x}\n",
        "? [k]\n: {bin_path: /a}\n",
        "a: {bin_path: \"/a\\0b\"}\n",
        "a:\n\tb\n",
        "{a: {bin_path: /a}} x\n",
        "a: {bin_path: /a}\n...\nx",
    };
    const TemporaryTree tree;
    for (const char* const text : files) {
        SCOPED_TRACE(text);
        const std::string path = tree.Write("apps.yaml", text);
        const std::string top = tree.Write("top.yaml", "startup_path_list: [" + path + "]\n");

        const Configuration configuration = LoadConfiguration({top, "", {}});

        bool isLoadedByTheLibrary = false;
        for (const tool::LogLine& line : configuration.lines) {
            isLoadedByTheLibrary = isLoadedByTheLibrary || line.format == "Load sub startup file=%s";
        }
        EXPECT_EQ(isLoadedByTheLibrary, configuration.tree.IsLoaded(1));
        for (const EntryState state : configuration.entryStates) {
            EXPECT_NE(EntryState::UNREAD, state);
        }
        EXPECT_EQ(configuration.apps.size(), configuration.appByName.size());
    }
}

} // namespace
