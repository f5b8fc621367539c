// Input that no configuration should hold: a load of it says false or gives a tree that can be read, and
// nothing worse.

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_tree.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using test_support::At;
using test_support::Lines;
using test_support::Load;

namespace {

class BadInputTest : public testing::Test {
protected:
    // A root that stands in what was loaded is read in every way there is.
    static void ReadEverything(const KvsTypeYaml& handle)
    {
        std::vector<KvsTypeYaml> entries;
        KvsTypeYaml sub;
        EXPECT_EQ(handle.GetArray(entries), handle.GetSubKvs("", sub) || !entries.empty());
        EXPECT_EQ(handle.GetSequenceString().size(), handle.GetSequenceYamlNode().size());
        EXPECT_EQ(handle.GetSequenceUint32().size(), handle.GetSequenceYamlNode().size());
        EXPECT_TRUE(handle.GetString().empty() || handle.GetSequenceYamlNode().empty());
    }

    test_support::LogCapture log_;
    test_support::TemporaryTree tree_;
};

TEST_F(BadInputTest, TextThatIsNotYamlIsRefused)
{
    const std::string cases[] = {
        "a: [1, 2",
        "a: 1\n b: 2\n",
        "\tb: 1",
        "a: 'open",
        "*nothing_so_far",
        "{a: 1]",
        "\x80\xff\xfe\xfa",
        std::string("\0\0\0\0", 4),
        "\x7f"
        "ELF\x02\x01\x01",
        "a: \x01\n",
    };
    for (const std::string& content : cases) {
        SCOPED_TRACE(testing::PrintToString(content));
        const std::string path = tree_.Write("bad.yaml", content);
        KvsTypeYaml root;

        EXPECT_FALSE(root.InitYamlNode(path));

        EXPECT_EQ(log_.Take(), Lines({test_support::NotYaml(path)}));
    }
}

TEST_F(BadInputTest, PairsOfBytesFromAllOverTheRangeEitherLoadOrAreNotYaml)
{
    std::string content = "a: ";
    for (int first = 1; first < 256; first += 13) {
        for (int second = 0; second < 256; second += 17) {
            content.resize(3);
            content += static_cast<char>(first);
            content += static_cast<char>(second);
            const std::string path = tree_.Write("bytes.yaml", content);
            KvsTypeYaml root;

            const bool loaded = root.InitYamlNode(path);

            const Lines lines = log_.Take();
            ASSERT_EQ(lines, loaded ? Lines() : Lines({test_support::NotYaml(path)}));
        }
    }
}

TEST_F(BadInputTest, AFolderIsNotYaml)
{
    KvsTypeYaml root;

    EXPECT_FALSE(root.InitYamlNode(tree_.Path("")));

    EXPECT_EQ(log_.Take(), Lines({test_support::NotYaml(std::filesystem::canonical(tree_.Path("")))}));
}

TEST_F(BadInputTest, ALinkToNothingIsNotFoundByTheNameOfTheLink)
{
    const std::string link = tree_.Path("link.yaml");
    std::filesystem::create_symlink(tree_.Path("nothing"), link);
    KvsTypeYaml root;

    EXPECT_FALSE(root.InitYamlNode(link));

    EXPECT_EQ(log_.Take(), Lines({test_support::FileNotFound(link)}));
}

TEST_F(BadInputTest, PathsThatCannotBeResolvedAreNotFound)
{
    for (const std::string& path :
         {std::string(), "/" + std::string(5000, 'a'), tree_.Write("file", "a: 1") + "/below"}) {
        SCOPED_TRACE(path);
        KvsTypeYaml root;

        EXPECT_FALSE(root.InitYamlNode(path));

        EXPECT_EQ(log_.Take(), Lines({test_support::FileNotFound(path)}));
    }
}

TEST_F(BadInputTest, AHundredThousandSequencesInsideEachOtherDoNotExhaustTheStack)
{
    const int depth = 100000;
    std::string content;
    for (int level = 0; level < depth; ++level) {
        content += "- ";
    }
    KvsTypeYaml handle = Load(content + "core");

    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(handle.GetSequenceYamlNode().size(), 1U);
        handle = KvsTypeYaml(handle.GetSequenceYamlNode()[0]);
    }

    EXPECT_EQ(handle.GetString(), "core");
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(BadInputTest, ASequenceThatContainsItselfIsReadLikeAnyOther)
{
    KvsTypeYaml handle = Load("&a [*a, 7]\n");

    for (int level = 0; level < 20; ++level) {
        EXPECT_EQ(handle.GetSequenceString(), std::vector<std::string>({"", "7"}));
        EXPECT_EQ(handle.GetSequenceUint32(), std::vector<std::uint32_t>({0, 7}));
        handle = KvsTypeYaml(handle.GetSequenceYamlNode().at(0));
    }
}

TEST_F(BadInputTest, AMappingThatContainsItselfIsReadLikeAnyOther)
{
    KvsTypeYaml handle = Load("&a {k: *a, v: 7}\n");

    for (int level = 0; level < 20; ++level) {
        EXPECT_EQ(At(handle, "v").GetInt(), 7);
        EXPECT_EQ(At(handle, "k").GetString(), "");
        std::vector<KvsTypeYaml> entries;
        ASSERT_TRUE(handle.GetArray(entries));
        ASSERT_EQ(entries.size(), 2U);
        ASSERT_TRUE(handle.GetSubKvs("k", handle)); // a handle may move itself down
    }
    EXPECT_EQ(handle.GetKey(), "k");
}

TEST_F(BadInputTest, AMappingThatIsItsOwnKeyHasAnEmptyKey)
{
    const KvsTypeYaml root = Load("&a\n? *a\n: deep\n");

    EXPECT_EQ(At(root, "").GetString(), "deep");
    ReadEverything(root);
}

TEST_F(BadInputTest, AScalarOfTwentyMegabytesIsReadWhole)
{
    const std::string text(20U << 20U, 'x');
    const KvsTypeYaml value = test_support::LoadValue(text);

    EXPECT_EQ(value.GetString().size(), text.size());
    EXPECT_TRUE(value.GetString() == text);
    EXPECT_EQ(value.GetInt(), 0);
    EXPECT_FALSE(value.GetBool());
}

} // namespace
