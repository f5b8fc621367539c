// One file from its path to a loaded document: what is logged, and what errno and the handle are afterwards.

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/file_calls.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_tree.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using test_support::At;
using test_support::FailingFopen;
using test_support::FailingRealpath;
using test_support::FopenLeavingErrno;
using test_support::Lines;

namespace {

class YamlDocumentTest : public testing::Test {
protected:
    // Loads the file and keeps what errno is right afterwards.
    bool Init(KvsTypeYaml& handle, const std::string& path)
    {
        errno = 0;
        const bool loaded = handle.InitYamlNode(path);
        errno_ = errno;
        return loaded;
    }

    static std::ptrdiff_t OpenFiles()
    {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    }

    test_support::LogCapture log_;
    test_support::TemporaryTree tree_;
    int errno_ = 0;
};

TEST_F(YamlDocumentTest, ALoadedFileIsReadThroughItsRootAndLogsNothing)
{
    KvsTypeYaml root;

    EXPECT_TRUE(Init(root, tree_.Write("a.yaml", "name: web\n")));

    EXPECT_EQ(At(root, "name").GetString(), "web");
    EXPECT_EQ(root.GetKey(), "");
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(YamlDocumentTest, APathThatDoesNotExistIsOnlyInformationWithThePathAsGiven)
{
    KvsTypeYaml root;
    const std::string path = tree_.Path("x/../missing.yaml");

    EXPECT_FALSE(Init(root, path));

    EXPECT_EQ(errno_, ENOENT);
    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_INFO, " [YAMLPARSE][InitYamlNode 161] file not found, yamlPath=" + path}}));
    EXPECT_EQ(lines[0].format, " [%s][%s %d] file not found, yamlPath=%s");
}

TEST_F(YamlDocumentTest, ErrnoOfAFailedResolutionSurvivesTheLogCall)
{
    const std::string path = tree_.Write("a.yaml", "name: web\n");
    for (const int error : {EACCES, ELOOP, ENOTDIR, ENOENT}) {
        SCOPED_TRACE(error);
        const FailingRealpath failing(path, error);
        KvsTypeYaml root;

        EXPECT_FALSE(Init(root, path));

        EXPECT_EQ(errno_, error);
        EXPECT_EQ(log_.Take(),
                  Lines({{LOG_INFO, " [YAMLPARSE][InitYamlNode 161] file not found, yamlPath=" + path}}));
    }
}

TEST_F(YamlDocumentTest, ErrnoOfAFailedOpeningSurvivesTheLogCallWhichNamesTheResolvedPath)
{
    const std::string path = tree_.Write("real.yaml", "name: web\n");
    const std::string link = tree_.Path("link.yaml");
    std::filesystem::create_symlink(path, link);
    for (const int error : {EACCES, EMFILE, ENOMEM}) {
        SCOPED_TRACE(error);
        const FailingFopen failing(path, error);
        KvsTypeYaml root;

        EXPECT_FALSE(Init(root, link));

        EXPECT_EQ(errno_, error);
        const Lines lines = log_.Take();
        ASSERT_EQ(lines, Lines({{LOG_ERR, " [YAMLPARSE][InitYamlNode 167] Load yaml=" + path +
                                              " failed, open failed"}}));
        EXPECT_EQ(lines[0].format, " [%s][%s %d] Load yaml=%s failed, open failed");
    }
}

TEST_F(YamlDocumentTest, ErrnoIsNotResetByAFileThatIsOpenedButNotYaml)
{
    const std::string path = tree_.Write("bad.yaml", "a: [");
    const FopenLeavingErrno stale(path, EACCES);
    KvsTypeYaml root;

    EXPECT_FALSE(Init(root, path));

    EXPECT_EQ(errno_, EACCES);
}

TEST_F(YamlDocumentTest, AFileThatIsNotYamlIsReportedWithTheResolvedPath)
{
    const std::string path = tree_.Write("bad.yaml", "a: [1, 2\n");
    const std::string link = tree_.Path("link.yaml");
    std::filesystem::create_symlink(path, link);
    KvsTypeYaml root;

    EXPECT_FALSE(Init(root, link));

    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_ERR, " [YAMLPARSE][InitYamlNode 175] Load yaml=" + path +
                                          " failed, init yaml paser failed"}}));
    EXPECT_EQ(lines[0].format, " [%s][%s %d] Load yaml=%s failed, init yaml paser failed");
}

TEST_F(YamlDocumentTest, AFileWithoutADocumentHasNoRoot)
{
    const std::string path = tree_.Path("empty.yaml");
    for (const char* content : {"", "\n\n", "# only a comment\n"}) {
        SCOPED_TRACE(content);
        tree_.Write("empty.yaml", content);
        KvsTypeYaml root;

        EXPECT_FALSE(Init(root, path));

        const Lines lines = log_.Take();
        ASSERT_EQ(lines, Lines({{LOG_ERR, " [YAMLPARSE][InitYamlNode 183] Load yaml=" + path +
                                              " failed, root node is nullptr"}}));
        EXPECT_EQ(lines[0].format, " [%s][%s %d] Load yaml=%s failed, root node is nullptr");
    }
}

TEST_F(YamlDocumentTest, OnlyTheFirstOfSeveralDocumentsIsSeen)
{
    KvsTypeYaml root;

    ASSERT_TRUE(Init(root, tree_.Write("many.yaml", "---\na: 1\n---\nb: 2\n--- [broken")));

    KvsTypeYaml untouched;
    EXPECT_EQ(At(root, "a").GetInt(), 1);
    EXPECT_FALSE(root.GetSubKvs("b", untouched));
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(YamlDocumentTest, TheFileIsClosedAgainAfterEveryOutcome)
{
    struct Case {
        const char* content;
        bool loads;
    };
    for (const Case& c : {Case{"a: 1\n", true}, Case{"a: [", false}, Case{"", false}}) {
        SCOPED_TRACE(c.content);
        const std::string path = tree_.Write("a.yaml", c.content);
        const std::ptrdiff_t before = OpenFiles();
        KvsTypeYaml root;

        EXPECT_EQ(root.InitYamlNode(path), c.loads);

        EXPECT_EQ(OpenFiles(), before);
    }
}

TEST_F(YamlDocumentTest, AFileThatCannotBeOpenedLeavesTheHandleWhereItWas)
{
    const std::string path = tree_.Write("a.yaml", "{a: first}");
    KvsTypeYaml handle = test_support::Load("{k: [old]}");
    ASSERT_TRUE(handle.GetSubKvs("k", handle));

    EXPECT_FALSE(handle.InitYamlNode(tree_.Path("missing.yaml")));
    {
        const FailingFopen failing(path, EACCES);
        EXPECT_FALSE(handle.InitYamlNode(path));
    }

    EXPECT_EQ(handle.GetSequenceString(), std::vector<std::string>({"old"}));
    EXPECT_EQ(handle.GetKey(), "k");
}

TEST_F(YamlDocumentTest, ASecondLoadMovesTheHandleAndKeepsItsKey)
{
    KvsTypeYaml handle = At(test_support::Load("k: old\n"), "k");

    ASSERT_TRUE(handle.InitYamlNode(tree_.Write("new.yaml", "new text\n")));

    EXPECT_EQ(handle.GetString(), "new text");
    EXPECT_EQ(handle.GetKey(), "k");
}

} // namespace
