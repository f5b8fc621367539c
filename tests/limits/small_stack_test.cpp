// Nothing recurses over input: all of it runs on a stack of 256 KiB.

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>

#include "startplan/application_manifest.h"
#include "startplan/depend_graph.h"
#include "startplan/kvs_type_yaml.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_tree.h"

namespace {

constexpr std::size_t kStackSize = 256 * 1024;
constexpr std::size_t kVertices = 100000;

void* RunOn(void* function)
{
    (*static_cast<std::function<void()>*>(function))();
    return nullptr;
}

void RunOnSmallStack(std::function<void()> function)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, kStackSize));
    pthread_t thread = {};
    ASSERT_EQ(0, pthread_create(&thread, &attributes, RunOn, &function));
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

std::string NameOf(std::size_t number)
{
    return "application_" + std::to_string(number);
}

class SmallStackTest : public testing::Test {
protected:
    // 5,000 levels of block sequences and 2,000 of flow ones, which take libyaml quadratic time.
    static std::string Nested()
    {
        std::string text = "deep: ";
        for (int i = 0; i < 2000; ++i) {
            text += "[{a: ";
        }
        text += "x";
        for (int i = 0; i < 2000; ++i) {
            text += "}]";
        }
        text += "\nother:\n  ";
        for (int i = 0; i < 5000; ++i) {
            text += "- ";
        }
        return text + "x\n";
    }

    test_support::LogCapture log_;
    test_support::TemporaryTree tree_;
};

TEST_F(SmallStackTest, AWholeParseWithDeeplyNestedFiles)
{
    const std::string file = tree_.Write("apps.yaml", "web: {bin_path: /web, depends: [web]}\n" + Nested() +
                                                          "last: {bin_path: /last}\n");
    const std::string top = tree_.Write("top.yaml", "startup_path_list: [" + file + "]\n" + Nested());
    const std::string replace = tree_.Write("replace.yaml", "cfgmgr_env: {A: b}\n" + Nested());

    RunOnSmallStack([&] {
        ParseAndDepend front;
        std::map<std::string, std::string> replaceData;
        std::vector<ApplicationManifest> apps;
        EXPECT_EQ(0U, front.ParseToReplaceData(PARAM_TYPE_YAML, replace, replaceData));
        EXPECT_EQ(0U, front.ParseYaml(PARAM_TYPE_YAML, top, apps, replaceData));
        EXPECT_EQ(1U, replaceData.size());
        ASSERT_EQ(2U, apps.size());
        EXPECT_EQ("last", apps.back().GetAppName());
    });
}

TEST_F(SmallStackTest, AWalkDownToTheInnermostNode)
{
    std::string text;
    for (int i = 0; i < 3000; ++i) {
        text += "- ";
    }
    const std::string file = tree_.Write("deep.yaml", text + "innermost\n");

    RunOnSmallStack([&] {
        ProcMgr::KvsTypeYaml node;
        ASSERT_TRUE(node.InitYamlNode(file));
        int depth = 0;
        for (std::vector<ProcMgr::KvsTypeYaml> items = node.GetSequenceYamlNode(); !items.empty(); ++depth) {
            node = items.front();
            items = node.GetSequenceYamlNode();
        }
        EXPECT_EQ(3000, depth);
        EXPECT_EQ("innermost", node.GetString());
    });
}

TEST_F(SmallStackTest, AChainOfAHundredThousandVertices)
{
    std::map<std::string, std::set<std::string>> chain;
    for (std::size_t i = 0; i < kVertices; ++i) {
        chain[NameOf(i)] = i > 0 ? std::set<std::string>{NameOf(i - 1)} : std::set<std::string>();
    }

    RunOnSmallStack([&] {
        DependGraph graph;
        graph.Update(chain);
        EXPECT_FALSE(graph.HasCycle());
        EXPECT_EQ(std::set<std::string>{NameOf(0)}, graph.GetNoDependVertices());
        EXPECT_TRUE(graph.Pop(NameOf(0)));
        EXPECT_EQ(std::set<std::string>{NameOf(1)}, graph.GetNoDependVertices());
        graph.Clear();
        EXPECT_TRUE(graph.IsEmpty());
    });
}

TEST_F(SmallStackTest, ACycleOfAHundredThousandVertices)
{
    std::map<std::string, std::set<std::string>> cycle;
    for (std::size_t i = 0; i < kVertices; ++i) {
        cycle[NameOf(i)] = {NameOf((i + kVertices - 1) % kVertices)};
    }

    RunOnSmallStack([&] {
        DependGraph graph;
        graph.Update(cycle);
        EXPECT_TRUE(graph.HasCycle());
        EXPECT_TRUE(graph.GetNoDependVertices().empty());
    });
    EXPECT_EQ(1U, log_.Take().size());
}

TEST_F(SmallStackTest, TheGraphsOfAHundredThousandApplications)
{
    ParseAndDepend::DependsMap table;
    std::vector<std::string> request;
    for (std::size_t i = 0; i < kVertices; ++i) {
        request.push_back(NameOf(i) + "_end"); // no name begins with another one
        if (i >= 10) {
            table[request.back()] = {NameOf(i % 10) + "_end"};
        } else {
            table[request.back()] = {};
        }
    }
    ParseAndDepend front;
    front.SetApplicationDependsMap(table);

    RunOnSmallStack([&] {
        DependGraph start;
        EXPECT_EQ(0U, front.GetStartGraph(request, start));
        std::size_t popped = 0;
        while (!start.IsEmpty()) {
            for (const std::string& name : start.GetNoDependVertices()) {
                popped += start.Pop(name) ? 1U : 0U;
            }
        }
        EXPECT_EQ(kVertices, popped);
        DependGraph stop;
        EXPECT_EQ(0U, front.GetTermGraph(request, stop));
        EXPECT_EQ(kVertices - 10, stop.GetNoDependVertices().size());
    });
}

} // namespace
