#include "tool/device/image_root.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/random_seed.h"
#include "tests/support/temporary_tree.h"
#include "tool/text/failure.h"

namespace {

using test_support::Random;
using test_support::TemporaryTree;
using tool::ImageRoot;

struct Resolved {
    std::string path; // empty where it fails
    int error = 0;
    bool operator==(const Resolved& other) const { return path == other.path && error == other.error; }
};

std::ostream& operator<<(std::ostream& out, const Resolved& resolved)
{
    return out << "\"" << resolved.path << "\" errno " << resolved.error;
}

Resolved ByTheSystem(const std::string& path)
{
    char* const found = realpath(path.c_str(), nullptr);
    if (found == nullptr) {
        return {"", errno};
    }
    const Resolved resolved{found, 0};
    std::free(found);
    return resolved;
}

Resolved ByTheRoot(const ImageRoot& root, const std::string& path)
{
    const auto found = root.Resolve(path);
    return found ? Resolved{*found, 0} : Resolved{"", errno};
}

// A few names, with "." and ".." among them, so that paths meet often.
std::string RandomPath(Random& random, bool isAbsolute)
{
    const char* const kNames[] = {"a", "b", "c", "d", "file", ".", "..", ""};
    std::string path = isAbsolute ? "/" : "";
    const std::size_t count = random.Below(5) + 1;
    for (std::size_t i = 0; i < count; ++i) {
        path += (i == 0 ? "" : "/") + std::string(kNames[random.Below(8)]);
    }
    return path;
}

void FillWithLinks(const TemporaryTree& tree, Random& random, const std::string& prefixOfAbsoluteLinks)
{
    tree.Write("a/b/file", "");
    tree.Write("b/file", "");
    tree.Write("file", "");
    for (const char* folder : {"", "a/", "a/b/", "b/"}) {
        for (const char* name : {"c", "d"}) {
            const std::string target = random.OneIn(3) ? prefixOfAbsoluteLinks + RandomPath(random, true)
                                                       : RandomPath(random, false);
            if (!target.empty()) {
                ASSERT_EQ(0, symlink(target.c_str(), tree.Path(folder + std::string(name)).c_str()));
            }
        }
    }
}

TEST(ImageRootTest, TheMachinesOwnRootResolvesAsTheSystemDoes)
{
    Random random;
    const ImageRoot root("/");
    std::size_t found = 0;
    for (int round = 0; round < 40; ++round) {
        const TemporaryTree tree;
        FillWithLinks(tree, random, tree.Path(""));
        for (int i = 0; i < 100; ++i) {
            const std::string path = tree.Path("") + RandomPath(random, false);
            const Resolved expected = ByTheSystem(path);
            found += expected.error == 0 ? 1U : 0U;
            ASSERT_EQ(expected, ByTheRoot(root, path)) << path;
        }
    }
    EXPECT_GT(found, 400U);
}

// What a link or ".." leads to is below the folder, whatever stands above it.
TEST(ImageRootTest, NoPathLeadsOutOfTheFolder)
{
    Random random;
    for (int round = 0; round < 40; ++round) {
        const TemporaryTree tree;
        FillWithLinks(tree, random, "");
        const std::string folder = std::filesystem::canonical(tree.Path("")).string();
        const ImageRoot root(folder);
        for (int i = 0; i < 100; ++i) {
            const std::string path = RandomPath(random, random.OneIn(2));
            const auto resolved = root.Resolve(path);
            if (!resolved) {
                continue;
            }
            // It lies in the folder, and the system finds no link in it.
            const std::string here = folder + (*resolved == "/" ? "" : *resolved);
            ASSERT_EQ(here, std::filesystem::canonical(here)) << path;
            struct stat seen = {};
            struct stat real = {};
            ASSERT_EQ(0, root.Examine(path, seen));
            ASSERT_EQ(0, lstat(here.c_str(), &real));
            ASSERT_EQ(real.st_ino, seen.st_ino) << path;
        }
    }
}

TEST(ImageRootTest, PathsMeanWhatTheyMeanOnTheDevice)
{
    const TemporaryTree tree;
    tree.Write("image/etc/real.yaml", "");
    tree.Write("outside.yaml", "");
    ASSERT_EQ(0, symlink("/etc/real.yaml", tree.Path("image/absolute").c_str()));
    ASSERT_EQ(0, symlink("../../../etc/real.yaml", tree.Path("image/etc/upward").c_str()));
    ASSERT_EQ(0, symlink("loop", tree.Path("image/loop").c_str()));
    const ImageRoot root(tree.Path("image"));

    EXPECT_EQ((Resolved{"/etc/real.yaml", 0}), ByTheRoot(root, "/absolute"));
    EXPECT_EQ((Resolved{"/etc/real.yaml", 0}), ByTheRoot(root, "etc/upward"));
    EXPECT_EQ((Resolved{"/", 0}), ByTheRoot(root, "/../.."));
    EXPECT_EQ((Resolved{"", ENOENT}), ByTheRoot(root, "/../outside.yaml"));
    EXPECT_EQ((Resolved{"", ELOOP}), ByTheRoot(root, "/loop"));
    EXPECT_EQ((Resolved{"", ENOTDIR}), ByTheRoot(root, "/absolute/"));
    EXPECT_EQ((Resolved{"", ENOENT}), ByTheRoot(root, ""));
    EXPECT_EQ((Resolved{"", ENAMETOOLONG}), ByTheRoot(root, std::string(5000, '/')));
    EXPECT_EQ((Resolved{"", ENAMETOOLONG}), ByTheRoot(root, "/" + std::string(300, 'x')));
}

TEST(ImageRootTest, WhatIsNoFolderIsRefused)
{
    const TemporaryTree tree;

    EXPECT_THROW(ImageRoot(tree.Path("nowhere")), tool::Failure);
    EXPECT_THROW(ImageRoot(tree.Write("file", "")), tool::Failure);
}

} // namespace
