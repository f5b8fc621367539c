// How long a loaded document lives, who shares it, and what the types promise about copies.

#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_tree.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using ProcMgr::YamlDocument;
using test_support::At;
using test_support::DeletedDocuments;

static_assert(std::is_default_constructible_v<YamlDocument>);
static_assert(!std::is_copy_constructible_v<YamlDocument>);
static_assert(!std::is_copy_assignable_v<YamlDocument>);
static_assert(!std::is_move_constructible_v<YamlDocument>);
static_assert(!std::is_move_assignable_v<YamlDocument>);
static_assert(!std::is_polymorphic_v<YamlDocument>);

static_assert(std::is_default_constructible_v<KvsTypeYaml>);
static_assert(std::is_copy_constructible_v<KvsTypeYaml>);
static_assert(std::is_copy_assignable_v<KvsTypeYaml>);
static_assert(std::is_nothrow_move_constructible_v<KvsTypeYaml>);
static_assert(std::is_nothrow_move_assignable_v<KvsTypeYaml>);
static_assert(!std::is_polymorphic_v<KvsTypeYaml>);

namespace {

class DocumentLifetimeTest : public testing::Test {
protected:
    test_support::LogCapture log_;
    test_support::TemporaryTree tree_;
};

TEST_F(DocumentLifetimeTest, TheDocumentIsFreedWithItsLastHandle)
{
    std::optional<KvsTypeYaml> root = test_support::Load("a: {b: [c, d]}\n");
    std::optional<KvsTypeYaml> sub = At(*root, "a");
    std::optional<KvsTypeYaml> leaf = At(*sub, "b");
    const int before = DeletedDocuments();

    root.reset();
    sub.reset();

    EXPECT_EQ(leaf->GetSequenceString(), std::vector<std::string>({"c", "d"}));
    EXPECT_EQ(DeletedDocuments(), before);
    leaf.reset();
    EXPECT_EQ(DeletedDocuments(), before + 1);
}

TEST_F(DocumentLifetimeTest, ALoadReleasesTheDocumentHeldBeforeEvenWhenItFails)
{
    const std::string good = tree_.Write("good.yaml", "b: 2\n");
    const std::string empty = tree_.Write("empty.yaml", "");
    KvsTypeYaml handle = test_support::Load("a: 1\n");
    const int before = DeletedDocuments();

    ASSERT_TRUE(handle.InitYamlNode(good));
    EXPECT_EQ(DeletedDocuments(), before + 1);
    ASSERT_FALSE(handle.InitYamlNode(empty));
    EXPECT_EQ(DeletedDocuments(), before + 2);
}

TEST_F(DocumentLifetimeTest, ADocumentThatWasNeverLoadedIsNotDeleted)
{
    std::optional<KvsTypeYaml> handle(std::in_place);
    ASSERT_FALSE(handle->InitYamlNode(tree_.Write("bad.yaml", "a: [")));
    const int before = DeletedDocuments(); // libyaml's own clean-up is behind us

    handle.reset();
    std::optional<YamlDocument>(std::in_place).reset();

    EXPECT_EQ(DeletedDocuments(), before);
}

TEST_F(DocumentLifetimeTest, ADocumentWithoutARootWasLoadedAndIsDeleted)
{
    std::optional<KvsTypeYaml> handle(std::in_place);
    ASSERT_FALSE(handle->InitYamlNode(tree_.Write("empty.yaml", "")));
    const int before = DeletedDocuments();

    handle.reset();

    EXPECT_EQ(DeletedDocuments(), before + 1);
}

TEST_F(DocumentLifetimeTest, CopiesAndMovedHandlesReadTheSamePlace)
{
    const KvsTypeYaml first = At(test_support::Load("k: value\n"), "k");

    KvsTypeYaml copy = first;
    KvsTypeYaml assigned;
    assigned = first;
    const KvsTypeYaml moved = std::move(copy);

    for (const KvsTypeYaml* handle : {&first, &moved, static_cast<const KvsTypeYaml*>(&assigned)}) {
        EXPECT_EQ(handle->GetString(), "value");
        EXPECT_EQ(handle->GetKey(), "k");
    }
}

TEST_F(DocumentLifetimeTest, HandlesInOneFileMayLiveOnDifferentThreads)
{
    const int before = DeletedDocuments();
    {
        const KvsTypeYaml root = test_support::Load("a: {b: 7}\n");
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([handle = root] {
                for (int round = 0; round < 500; ++round) {
                    const KvsTypeYaml copy = handle;
                    ASSERT_EQ(At(At(copy, "a"), "b").GetInt(), 7);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    EXPECT_EQ(DeletedDocuments(), before + 1);
}

} // namespace
