// The three readers of a sequence.

#include <cstdint>
#include <string>
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

using Numbers = std::vector<std::uint32_t>;
using Texts = std::vector<std::string>;

struct SequenceCase {
    const char* yaml;
    Numbers numbers;
    Texts texts;
};
const SequenceCase kSequenceCases[] = {
    {"[]", {}, {}},
    {"[1, \"\", 3]", {1, 0, 3}, {"1", "", "3"}},
    {"[-1, 4294967296, 12abc, x]", {4294967295U, 4294967295U, 12, 0}, {"-1", "4294967296", "12abc", "x"}},
    {"[4294967295, 4294967294, 2147483648]",
     {4294967295U, 4294967294U, 2147483648U},
     {"4294967295", "4294967294", "2147483648"}},
    {"[8abc, -2, 0x10, 010, 1.5, +3]",
     {8, 4294967294U, 0, 10, 1, 3},
     {"8abc", "-2", "0x10", "010", "1.5", "+3"}},
    {"[\" 7 \", \"  \", \"\\t\"]", {7, 0, 0}, {" 7 ", "  ", "\t"}},
    {"[-4294967295, -4294967296, 99999999999999999999]",
     {1, 4294967295U, 4294967295U},
     {"-4294967295", "-4294967296", "99999999999999999999"}},
    {"[\"5\\x006\", \"\\x007\"]", {5, 0}, {"5", ""}}, // up to the first NUL
    {"[[7], {8: 9}, 1]", {0, 0, 1}, {"", "", "1"}},   // a nested collection has the empty text
    {"[null, ~, true]", {0, 0, 0}, {"null", "~", "true"}},
    {"[b, a, b]", {0, 0, 0}, {"b", "a", "b"}},
    {"[&x 4, *x]", {4, 4}, {"4", "4"}},
};

class SequencesTest : public testing::Test {
protected:
    test_support::LogCapture log_;
};

TEST_F(SequencesTest, ItemsAreReadInOrderAsNumbersAndAsTexts)
{
    for (const SequenceCase& c : kSequenceCases) {
        SCOPED_TRACE(c.yaml);
        const KvsTypeYaml root = Load(c.yaml);

        EXPECT_EQ(root.GetSequenceUint32(), c.numbers);
        EXPECT_EQ(root.GetSequenceString(), c.texts);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(SequencesTest, HandlesOnItemsHaveNoKeyAndOutliveTheSequence)
{
    std::vector<KvsTypeYaml> items;
    {
        const KvsTypeYaml list = At(Load("list: [a, {k: v}, [1, 2], \"\"]\n"), "list");
        items = list.GetSequenceYamlNode();
    }
    ASSERT_EQ(items.size(), 4U);
    for (const KvsTypeYaml& item : items) {
        EXPECT_EQ(item.GetKey(), "");
    }
    EXPECT_EQ(items[0].GetString(), "a");
    EXPECT_EQ(At(items[1], "k").GetString(), "v");
    EXPECT_EQ(items[2].GetSequenceUint32(), Numbers({1, 2}));
    EXPECT_TRUE(items[3].GetIsNullOfScalarType());
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(SequencesTest, AnythingElseIsAnEmptySequenceAndSilent)
{
    for (const KvsTypeYaml& handle : {Load("{a: [1]}"), Load("7"), Load("''"), Load("{}"), KvsTypeYaml()}) {
        EXPECT_EQ(handle.GetSequenceUint32(), Numbers());
        EXPECT_EQ(handle.GetSequenceString(), Texts());
        EXPECT_TRUE(handle.GetSequenceYamlNode().empty());
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(SequencesTest, AMissingItemDiscardsTheNumbers)
{
    const MissingNodes missing("GONE");

    EXPECT_EQ(Load("[1, GONE, 3]").GetSequenceUint32(), Numbers());

    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_ERR,
                             " [YAMLPARSE][GetSequenceUint32 87] Get uint32 sequence failed, the node ptr is "
                             "nullptr, default as empty"}}));
    EXPECT_EQ(lines[0].format,
              " [%s][%s %d] Get uint32 sequence failed, the node ptr is nullptr, default as empty");
}

TEST_F(SequencesTest, AMissingItemDiscardsTheTexts)
{
    const MissingNodes missing("GONE");

    EXPECT_EQ(Load("[a, b, GONE]").GetSequenceString(), Texts());

    const Lines lines = log_.Take();
    ASSERT_EQ(
        lines,
        Lines({{LOG_ERR, " [YAMLPARSE][GetSequenceString 116] Get string sequence failed, the node ptr is "
                         "nullptr, default as empty"}}));
    EXPECT_EQ(lines[0].format,
              " [%s][%s %d] Get string sequence failed, the node ptr is nullptr, default as empty");
}

TEST_F(SequencesTest, AMissingItemDiscardsTheHandles)
{
    const MissingNodes missing("GONE");

    EXPECT_TRUE(Load("[a, GONE, GONE, b]").GetSequenceYamlNode().empty());

    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_ERR,
                             " [YAMLPARSE][GetSequenceYamlNode 141] Get yaml node sequence failed, the node "
                             "ptr is nullptr, default as empty"}}));
    EXPECT_EQ(lines[0].format,
              " [%s][%s %d] Get yaml node sequence failed, the node ptr is nullptr, default as empty");
}

} // namespace
