// Which kind of parser the factory makes, and the kind that reads nothing.

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "startplan/parser.h"
#include "tests/support/log_capture.h"
#include "tests/support/manifest_builder.h"
#include "tests/support/temporary_tree.h"

using ProcMgr::CfgParser;
using ProcMgr::ParseFactory;
using ProcMgr::Parser;
using ProcMgr::YamlParser;

static_assert(std::is_same_v<std::underlying_type_t<ParamType>, std::uint32_t>);
static_assert(PARAM_TYPE_YAML == 0 && PARAM_TYPE_CFG == 1);
static_assert(std::is_abstract_v<Parser> && std::has_virtual_destructor_v<Parser>);
static_assert(std::is_base_of_v<Parser, YamlParser> && std::is_base_of_v<Parser, CfgParser>);
static_assert(std::is_convertible_v<YamlParser*, Parser*> && std::is_convertible_v<CfgParser*, Parser*>);
static_assert(sizeof(YamlParser) == sizeof(void*) && sizeof(CfgParser) == sizeof(void*)); // no state
static_assert(std::is_empty_v<ParseFactory>);
static_assert(std::is_same_v<decltype(&ParseFactory::CreateParser), std::shared_ptr<Parser> (*)(ParamType)>);

namespace {

std::atomic<int> allocations{0};
std::atomic<int> releases{0};

} // namespace

// The library allocates through these, too. Inlined, the optimiser takes malloc() and operator delete for a
// mismatched pair.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    ++releases;
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    ++releases;
    std::free(memory);
}

namespace {

class ParserFactoryTest : public testing::Test {
protected:
    test_support::LogCapture log_;
};

TEST_F(ParserFactoryTest, EachKindIsMadeByItsValue)
{
    const std::shared_ptr<Parser> yaml = ParseFactory::CreateParser(PARAM_TYPE_YAML);
    const std::shared_ptr<Parser> cfg = ParseFactory::CreateParser(PARAM_TYPE_CFG);

    ASSERT_TRUE(yaml && cfg);
    const Parser& yamlParser = *yaml;
    const Parser& cfgParser = *cfg;
    EXPECT_EQ(typeid(yamlParser), typeid(YamlParser));
    EXPECT_EQ(typeid(cfgParser), typeid(CfgParser));
    EXPECT_EQ(yaml.use_count(), 1);
    EXPECT_NE(ParseFactory::CreateParser(PARAM_TYPE_YAML), yaml);
}

TEST_F(ParserFactoryTest, AnyOtherValueNamesNoParserAndLogsNothing)
{
    for (const std::uint32_t value : {2U, 3U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(ParseFactory::CreateParser(static_cast<ParamType>(value)), nullptr);
    }
    EXPECT_EQ(log_.Take(), test_support::Lines());
}

TEST_F(ParserFactoryTest, AParserAndItsCountAreOneAllocationFreedWithTheLastPointer)
{
    for (const ParamType type : {PARAM_TYPE_YAML, PARAM_TYPE_CFG}) {
        const int allocatedBefore = allocations;
        std::shared_ptr<Parser> parser = ParseFactory::CreateParser(type);
        EXPECT_EQ(allocations - allocatedBefore, 1);

        std::shared_ptr<Parser> second = parser;
        const int releasedBefore = releases;
        parser.reset();
        EXPECT_EQ(releases - releasedBefore, 0);
        second.reset();
        EXPECT_EQ(releases - releasedBefore, 1);
    }
}

TEST_F(ParserFactoryTest, TheParserThatReadsNothingAcceptsEverythingAndTouchesNothing)
{
    const std::shared_ptr<Parser> parser = ParseFactory::CreateParser(PARAM_TYPE_CFG);
    std::vector<ApplicationManifest> apps = {test_support::ManifestValues().Build()};
    std::map<std::string, std::string> replaceData = {{"ROOT", "/etc"}};

    EXPECT_EQ(parser->ParseToApplication("/does/not/exist", apps, replaceData), 0U);
    EXPECT_EQ(parser->ParseToReplaceData("/does/not/exist", replaceData), 0U);
    EXPECT_EQ(CfgParser().ParseToApplication("", apps, {}), 0U);

    ASSERT_EQ(apps.size(), 1U);
    EXPECT_EQ(test_support::TextOf(apps[0]), test_support::TextOf(test_support::ManifestValues()));
    EXPECT_EQ(replaceData, (std::map<std::string, std::string>({{"ROOT", "/etc"}})));
    EXPECT_EQ(log_.Take(), test_support::Lines());
}

TEST_F(ParserFactoryTest, OneParserServesSeveralThreads)
{
    const test_support::TemporaryTree tree;
    const std::string apps =
        tree.Write("apps.yaml", "a: {bin_path: /a, uid: 1}\nb: {bin_path: /b, gid: 2}\n");
    const std::string top = tree.Write("top.yaml", "startup_path_list: ['${ROOT}/apps.yaml']\n");
    const std::shared_ptr<Parser> parser = ParseFactory::CreateParser(PARAM_TYPE_YAML);
    const std::map<std::string, std::string> replaceData = {{"ROOT", tree.Path("")}};

    std::vector<std::thread> threads;
    std::atomic<int> good{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                std::vector<ApplicationManifest> parsed;
                const std::uint32_t code = parser->ParseToApplication(top, parsed, replaceData);
                good += code == 0 && parsed.size() == 2 && parsed[1].GetAppName() == "b" ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(good, 80);
}

} // namespace
