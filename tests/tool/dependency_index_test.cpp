#include "tool/configuration/dependency_index.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/random_seed.h"
#include "tests/support/temporary_tree.h"
#include "tool/check/check_dependencies.h"
#include "tool/check/finding.h"
#include "tool/check/sufferers.h"

namespace {

using test_support::Random;
using test_support::TemporaryTree;
using tool::Configuration;
using tool::DependencyIndex;
using tool::kNone;

Configuration Load(const TemporaryTree& tree, const std::string& apps)
{
    const std::string path = tree.Write("apps.yaml", apps);
    return tool::LoadConfiguration({tree.Write("top.yaml", "startup_path_list: [" + path + "]\n"), "", {}});
}

// Entries with few names, so that some come twice, some are incomplete and many depend on one that is missing.
std::string RandomEntries(Random& random)
{
    const std::vector<std::string> names = {"a", "b", "c", "d", "e", "f", "g<1>", "missing", "''"};
    std::string text;
    for (std::size_t i = random.Below(9); i > 0; --i) {
        text += "? " + names[random.Below(7)] + "\n: {";
        text += random.OneIn(6) ? "" : "bin_path: /b, ";
        text += "depends: ";
        if (random.OneIn(8)) {
            text += "a}\n";
            continue;
        }
        text += "[";
        for (std::size_t j = random.Below(4); j > 0; --j) {
            text += names[random.OneIn(9) ? 7 + random.Below(2) : random.Below(7)] + ", ";
        }
        text += "]}\n";
    }
    return text;
}

std::set<std::string> TextsOf(const DependencyIndex& index, std::size_t name)
{
    std::set<std::string> texts;
    for (const DependencyIndex::Dependency& dependency : index.DependenciesOf(name)) {
        EXPECT_TRUE(texts.emplace(index.Text(name, dependency)).second) << "twice";
        EXPECT_EQ(index.Find(index.Text(name, dependency)), dependency.target);
    }
    return texts;
}

// What the library keeps has the dependencies of its table, and what it drops is dropped here, too.
void ExpectTheLibrarysTable(const Configuration& configuration)
{
    const DependencyIndex index(configuration);
    const ParseAndDepend::DependsMap& table = configuration.library.GetApplicationDependsMap();
    std::set<std::string> dropped;
    for (const tool::MissingDependency& one : configuration.missing) {
        dropped.insert(one.application);
        const std::size_t name = index.Find(one.application);
        ASSERT_NE(kNone, name);
        EXPECT_EQ(kNone, index.Find(one.dependency));
        EXPECT_EQ(1U, TextsOf(index, name).count(one.dependency));
    }
    EXPECT_EQ(table.size() + dropped.size(), index.Size());
    for (std::size_t name = 0; name < index.Size(); ++name) {
        const std::string text(index.Names()[name]);
        EXPECT_EQ(dropped.count(text) != 0, index.IsDropped(name)) << text;
        if (!index.IsDropped(name)) {
            EXPECT_EQ(table.at(text), TextsOf(index, name)) << text;
        }
        for (const std::size_t dependant : index.DependantsOf(name)) {
            EXPECT_NE(nullptr, index.FindDependency(dependant, name));
        }
    }
}

// Each line of the library about a missing dependency has its finding, and nothing else has.
void ExpectAFindingForEachMissingDependency(const Configuration& configuration)
{
    const std::set<std::string> rules = {"missing-dependency", "empty-dependency",
                                         "dependency-is-pattern-instance", "dependency-spelling"};
    tool::Findings findings;
    tool::CheckDependencies(configuration, findings);
    const std::vector<tool::Finding> sorted = findings.TakeSorted();
    const auto count = std::count_if(sorted.begin(), sorted.end(), [&rules](const tool::Finding& finding) {
        return rules.count(finding.rule->id) != 0;
    });
    EXPECT_EQ(configuration.missing.size(), static_cast<std::size_t>(count));
}

TEST(DependencyIndexTest, RandomEntriesGiveTheLibrarysTable)
{
    Random random;
    const TemporaryTree tree;
    for (int run = 0; run < 500 && !testing::Test::HasFailure(); ++run) {
        const std::string entries = RandomEntries(random);
        SCOPED_TRACE(entries);
        const Configuration configuration = Load(tree, entries);
        ExpectTheLibrarysTable(configuration);
        ExpectAFindingForEachMissingDependency(configuration);
    }
}

TEST(DependencyIndexTest, TheItemIsTheFirstOneWithItsText)
{
    const TemporaryTree tree;
    const Configuration configuration = Load(tree, "a: {bin_path: /a, depends: [b, b]}\nb: {bin_path: /b}\n");
    const DependencyIndex index(configuration);

    const DependencyIndex::Dependency* found = index.FindDependency(index.Find("a"), index.Find("b"));

    ASSERT_NE(nullptr, found);
    EXPECT_EQ(1U, found->item->mark.line);
    EXPECT_EQ(29U, found->item->mark.column);
}

TEST(SuffererSearchTest, FindsTheNearestFirstAndLeavesOutWhatIsDropped)
{
    const TemporaryTree tree;
    const Configuration configuration = Load(tree, "a: {bin_path: /a, depends: [gone]}\n"
                                                   "b: {bin_path: /b, depends: [c]}\n"
                                                   "c: {bin_path: /c, depends: [a]}\n"
                                                   "d: {bin_path: /d, depends: [a, gone]}\n"
                                                   "e: {bin_path: /e, depends: [d]}\n"
                                                   "f: {bin_path: /f, depends: [a, b]}\n");
    const DependencyIndex index(configuration);
    tool::SuffererSearch search(index);

    const std::vector<std::string_view> ofA = {"c", "f", "b"};
    EXPECT_EQ(ofA, search.Find({index.Find("a")}).names);
    EXPECT_EQ(std::vector<std::string_view>{"e"}, search.Find({index.Find("d")}).names);
    EXPECT_TRUE(search.Find({index.Find("f")}).names.empty());
    EXPECT_EQ(ofA, search.Find({index.Find("a")}).names);
}

TEST(SuffererSearchTest, SaysWhereItWasCutShort)
{
    const TemporaryTree tree;
    std::string entries = "a: {bin_path: /a}\n";
    for (int i = 0; i < 3000; ++i) {
        entries += "b" + std::to_string(i) + ": {bin_path: /b, depends: [a]}\n";
    }
    const Configuration configuration = Load(tree, entries);
    const DependencyIndex index(configuration);

    const tool::SuffererSearch::Result result = tool::SuffererSearch(index).Find({index.Find("a")});

    EXPECT_TRUE(result.isCut);
    EXPECT_EQ(2000U, result.names.size());
}

} // namespace
