// A key in a mapping, and a mapping walked as a list of its entries.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/log_capture.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using test_support::At;
using test_support::Lines;
using test_support::Load;
using test_support::MissingNodes;

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

class MappingsTest : public testing::Test {
protected:
    static Pairs PairsOf(const std::vector<KvsTypeYaml>& entries)
    {
        Pairs pairs;
        for (const KvsTypeYaml& entry : entries) {
            pairs.emplace_back(entry.GetKey(), entry.GetString());
        }
        return pairs;
    }

    // A handle that is easily told from any other.
    static KvsTypeYaml Marked() { return At(Load("marked: untouched\n"), "marked"); }

    static void ExpectMarked(const KvsTypeYaml& handle)
    {
        EXPECT_EQ(handle.GetKey(), "marked");
        EXPECT_EQ(handle.GetString(), "untouched");
    }

    test_support::LogCapture log_;
};

TEST_F(MappingsTest, AKeyIsFoundAndItsValueCarriesTheKey)
{
    KvsTypeYaml sub = Marked();

    EXPECT_TRUE(Load("{a: 1, b: 2}").GetSubKvs("b", sub));

    EXPECT_EQ(sub.GetKey(), "b");
    EXPECT_EQ(sub.GetString(), "2");
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(MappingsTest, AKeyThatIsAbsentIsSilentAndLeavesTheOutputUntouched)
{
    const KvsTypeYaml root = Load("{abc: 1, \"nul\\0tail\": 2}");
    KvsTypeYaml sub = Marked();

    const std::string absent[] = {"",
                                  "ab",
                                  "abcd",
                                  "Abc",
                                  "abc ",
                                  " abc",
                                  "bc",
                                  "nulx",
                                  "1",
                                  std::string("abc\0", 4),
                                  std::string("nul\0tail", 8)};
    for (const std::string& key : absent) {
        SCOPED_TRACE(testing::PrintToString(key));
        EXPECT_FALSE(root.GetSubKvs(key, sub));
        ExpectMarked(sub);
    }
    EXPECT_FALSE(Load("{}").GetSubKvs("a", sub));
    ExpectMarked(sub);
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(MappingsTest, KeysAreComparedByTheirTextUpToTheFirstNul)
{
    EXPECT_EQ(At(Load("{\"nul\\0tail\": 2}"), "nul").GetString(), "2");
    EXPECT_EQ(At(Load("{? \"\" : empty}"), "").GetString(), "empty");
    EXPECT_EQ(At(Load("{\"\\0x\": hidden}"), "").GetString(), "hidden");
    EXPECT_EQ(At(Load("{~: tilde}"), "~").GetString(), "tilde");
    EXPECT_EQ(At(Load("{k: &x name, *x : aliased}"), "name").GetString(), "aliased");
}

TEST_F(MappingsTest, AKeyThatIsNoScalarHasTheEmptyText)
{
    EXPECT_EQ(At(Load("? [a, b]\n: list\n"), "").GetString(), "list");
    EXPECT_EQ(At(Load("? {a: b}\n: map\n"), "").GetString(), "map");

    std::vector<KvsTypeYaml> entries;
    EXPECT_TRUE(Load("? [a]\n: list\n? {a: b}\n: map\n").GetArray(entries));
    EXPECT_EQ(PairsOf(entries), Pairs({{"", "list"}, {"", "map"}}));
}

TEST_F(MappingsTest, TheFirstOfARepeatedKeyWins)
{
    EXPECT_EQ(At(Load("{a: first, b: x, a: second}"), "a").GetString(), "first");
}

TEST_F(MappingsTest, LookingForAKeyInSomethingElseIsWarnedOf)
{
    for (const KvsTypeYaml& handle : {Load("[a]"), Load("a"), KvsTypeYaml()}) {
        KvsTypeYaml sub = Marked();

        EXPECT_FALSE(handle.GetSubKvs("a", sub));

        ExpectMarked(sub);
        const Lines lines = log_.Take();
        ASSERT_EQ(lines, Lines({{LOG_WARNING,
                                 " [YAMLPARSE][GetSubKvs 240] Get sub yaml of a, the type is not map"}}));
        EXPECT_EQ(lines[0].format, " [%s][%s %d] Get sub yaml of %s, the type is not map");
    }
}

TEST_F(MappingsTest, AHandleMayMoveItselfDown)
{
    KvsTypeYaml handle = Load("a: {b: {c: deep}}\n");

    for (const char* key : {"a", "b", "c"}) {
        ASSERT_TRUE(handle.GetSubKvs(key, handle));
    }

    EXPECT_EQ(handle.GetString(), "deep");
    EXPECT_EQ(handle.GetKey(), "c");
}

TEST_F(MappingsTest, APairWithoutItsNodesEndsTheSearchForAKeyBehindIt)
{
    const MissingNodes missing("GONE");
    for (const char* yaml : {"{a: 1, GONE: 2, b: 3}", "{a: 1, x: GONE, b: 3}", "{a: 1, GONE: GONE, b: 3}"}) {
        SCOPED_TRACE(yaml);
        const KvsTypeYaml root = Load(yaml);
        KvsTypeYaml sub = Marked();

        EXPECT_FALSE(root.GetSubKvs("b", sub));

        ExpectMarked(sub);
        const Lines lines = log_.Take();
        ASSERT_EQ(
            lines,
            Lines({{LOG_ERR, " [YAMLPARSE][GetSubKvs 228] Get sub yaml of b failed, node ptr is nullptr"}}));
        EXPECT_EQ(lines[0].format, " [%s][%s %d] Get sub yaml of %s failed, node ptr is nullptr");
    }
}

TEST_F(MappingsTest, APairWithoutItsNodesIsNotSeenByTheSearchForAKeyBeforeIt)
{
    const MissingNodes missing("GONE");

    EXPECT_EQ(At(Load("{a: 1, GONE: 2, b: 3}"), "a").GetString(), "1");

    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(MappingsTest, AKeyWhoseOwnValueIsMissingIsNotFound)
{
    const MissingNodes missing("GONE");
    KvsTypeYaml sub = Marked();

    EXPECT_FALSE(Load("{a: GONE}").GetSubKvs("a", sub));

    ExpectMarked(sub);
    EXPECT_EQ(log_.Take().size(), 1U);
}

TEST_F(MappingsTest, TheEntriesOfAMappingComeInTheFilesOrderRepeatedKeysIncluded)
{
    std::vector<KvsTypeYaml> entries;

    EXPECT_TRUE(Load("{z: 1, a: 2, z: 3, \"\": 4, \"k\\0x\": 5, list: [6]}").GetArray(entries));

    EXPECT_EQ(PairsOf(entries),
              Pairs({{"z", "1"}, {"a", "2"}, {"z", "3"}, {"", "4"}, {"k", "5"}, {"list", ""}}));
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(MappingsTest, EntriesAreAppendedAndAnEmptyMappingAppendsNone)
{
    const KvsTypeYaml root = Load("{a: 1, b: 2}");
    std::vector<KvsTypeYaml> entries;

    EXPECT_TRUE(root.GetArray(entries));
    EXPECT_TRUE(root.GetArray(entries));
    EXPECT_TRUE(Load("{}").GetArray(entries));

    EXPECT_EQ(PairsOf(entries), Pairs({{"a", "1"}, {"b", "2"}, {"a", "1"}, {"b", "2"}}));
}

TEST_F(MappingsTest, AHandleMayStandInTheListThatItsEntriesAreAppendedTo)
{
    std::vector<KvsTypeYaml> entries = {Load("{a: 1, b: 2, c: 3}")};

    EXPECT_TRUE(entries[0].GetArray(entries));

    EXPECT_EQ(PairsOf(entries), Pairs({{"", ""}, {"a", "1"}, {"b", "2"}, {"c", "3"}}));
}

TEST_F(MappingsTest, EntriesOutliveTheHandleTheyCameFrom)
{
    std::vector<KvsTypeYaml> entries;
    {
        const KvsTypeYaml root = Load("{a: {x: 1}, b: 2}");
        ASSERT_TRUE(root.GetArray(entries));
    }
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(At(entries[0], "x").GetString(), "1");
    EXPECT_EQ(entries[1].GetString(), "2");
}

TEST_F(MappingsTest, AskingSomethingElseForItsEntriesIsWarnedOf)
{
    for (const KvsTypeYaml& handle : {Load("[a]"), Load("a"), Load("''"), KvsTypeYaml()}) {
        std::vector<KvsTypeYaml> entries = {Marked()};

        EXPECT_FALSE(handle.GetArray(entries));

        ASSERT_EQ(entries.size(), 1U);
        ExpectMarked(entries[0]);
        const Lines lines = log_.Take();
        ASSERT_EQ(lines,
                  Lines({{LOG_WARNING, " [YAMLPARSE][GetArray 197] Get yaml array, the type is not map"}}));
        EXPECT_EQ(lines[0].format, " [%s][%s %d] Get yaml array, the type is not map");
    }
}

TEST_F(MappingsTest, APairWithoutItsNodesEndsTheListAndKeepsWhatCameBefore)
{
    const MissingNodes missing("GONE");
    for (const char* yaml : {"{a: 1, b: 2, GONE: 3, c: 4}", "{a: 1, b: 2, x: GONE, c: 4}"}) {
        SCOPED_TRACE(yaml);
        const KvsTypeYaml root = Load(yaml);
        std::vector<KvsTypeYaml> entries;

        EXPECT_FALSE(root.GetArray(entries));

        EXPECT_EQ(PairsOf(entries), Pairs({{"a", "1"}, {"b", "2"}}));
        const Lines lines = log_.Take();
        ASSERT_EQ(
            lines,
            Lines({{LOG_ERR, " [YAMLPARSE][GetArray 209] Get yaml array failed, the node ptr is nullptr"}}));
        EXPECT_EQ(lines[0].format, " [%s][%s %d] Get yaml array failed, the node ptr is nullptr");
    }
}

// Its node still says "mapping", and what the node points at is in other hands.
TEST_F(MappingsTest, AMappingThatWasMovedFromHasNoEntries)
{
    KvsTypeYaml root = Load("{a: 1, b: 2}");
    const KvsTypeYaml owner = std::move(root);
    KvsTypeYaml sub = Marked();
    std::vector<KvsTypeYaml> entries = {Marked()};

    EXPECT_FALSE(root.GetSubKvs("a", sub));
    EXPECT_FALSE(root.GetArray(entries));

    ExpectMarked(sub);
    EXPECT_EQ(PairsOf(entries), Pairs({{"marked", "untouched"}}));
    EXPECT_EQ(At(owner, "a").GetString(), "1");
    EXPECT_EQ(log_.Take(), Lines());
}

} // namespace
