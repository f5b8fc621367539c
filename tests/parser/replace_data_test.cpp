// The file that gives placeholders their values.

#include <cerrno>
#include <cstdint>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "tests/support/file_calls.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_tree.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"

using test_support::Lines;
using test_support::LogLine;
using test_support::MissingNodes;

namespace {

using ReplaceData = std::map<std::string, std::string>;

class ReplaceDataTest : public testing::Test {
protected:
    std::uint32_t Parse(const std::string& content)
    {
        path_ = tree_.Write("replace.yaml", content);
        return parser_.ParseToReplaceData(path_, data_);
    }

    LogLine LoadFailed() const { return {LOG_ERR, "Load file=" + path_ + " failed, init yaml node failed"}; }
    LogLine RootIsNoMapping() const
    {
        return {LOG_ERR,
                "CreateVehicleData failed, " + path_ + " is invalid yaml file, first layer is not an array!"};
    }
    LogLine ValueIsNoMapping() const
    {
        return {LOG_ERR, "CreateVehicleData failed, " + path_ +
                             " is invalid yaml file, cfgmgr_env 's value is not an array!"};
    }

    const ProcMgr::YamlParser parser_{};
    test_support::LogCapture log_;
    test_support::TemporaryTree tree_;
    ReplaceData data_;
    std::string path_;
};

TEST_F(ReplaceDataTest, NamesAndValuesOfTheOneKeyAreRead)
{
    EXPECT_EQ(Parse("other: {X: 0}\n"
                    "cfgmgr_env: {ROOT: /etc/app, EMPTY: , LIST: [a], '': nameless, ' a ': ' b '}\n"
                    "cfgmgr_env2: {Y: 0}\n"),
              0U);

    EXPECT_EQ(
        data_,
        ReplaceData({{"", "nameless"}, {" a ", " b "}, {"EMPTY", ""}, {"LIST", ""}, {"ROOT", "/etc/app"}}));
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ReplaceDataTest, TheFirstValueOfANameWins)
{
    data_ = {{"OLD", "before"}};

    EXPECT_EQ(Parse("cfgmgr_env: {X: 1, X: 2, OLD: after}\ncfgmgr_env: {X: 3, Y: 4}\n"), 0U);

    EXPECT_EQ(data_, ReplaceData({{"OLD", "before"}, {"X", "1"}, {"Y", "4"}}));
}

TEST_F(ReplaceDataTest, ThereMayBeNothingToRead)
{
    for (const char* content : {"{}", "other: {X: 1}\n", "cfgmgr_env: {}\n", "Cfgmgr_env: {X: 1}\n"}) {
        SCOPED_TRACE(content);
        EXPECT_EQ(Parse(content), 0U);
    }
    EXPECT_TRUE(data_.empty());
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ReplaceDataTest, AValueThatIsNoMappingIsAnErrorAndTheNextPairIsRead)
{
    EXPECT_EQ(Parse("cfgmgr_env: {A: 1}\ncfgmgr_env: [X]\ncfgmgr_env:\ncfgmgr_env: {B: 2}\n"), 0U);

    EXPECT_EQ(data_, ReplaceData({{"A", "1"}, {"B", "2"}}));
    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({test_support::ArrayIsNoMapping(), ValueIsNoMapping(),
                            test_support::ArrayIsNoMapping(), ValueIsNoMapping()}));
    EXPECT_EQ(lines[1].format,
              "CreateVehicleData failed, %s is invalid yaml file, %s 's value is not an array!");
}

TEST_F(ReplaceDataTest, ARootThatIsNoMappingIsAFailure)
{
    data_ = {{"OLD", "before"}};
    for (const char* content : {"[cfgmgr_env]", "text", "''"}) {
        SCOPED_TRACE(content);

        EXPECT_EQ(Parse(content), PARSE_ERR_NO_STARTUP_FILE);

        const Lines lines = log_.Take();
        ASSERT_EQ(lines, Lines({test_support::ArrayIsNoMapping(), RootIsNoMapping()}));
        EXPECT_EQ(lines[1].format,
                  "CreateVehicleData failed, %s is invalid yaml file, first layer is not an array!");
    }
    EXPECT_EQ(data_, ReplaceData({{"OLD", "before"}}));
}

TEST_F(ReplaceDataTest, AFileThatCannotBeLoadedIsNamedAndThenFailsForItsRoot)
{
    path_ = tree_.Path("missing.yaml");
    EXPECT_EQ(parser_.ParseToReplaceData(path_, data_), PARSE_ERR_NO_STARTUP_FILE);
    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({test_support::FileNotFound(path_), LoadFailed(), test_support::ArrayIsNoMapping(),
                            RootIsNoMapping()}));
    EXPECT_EQ(lines[1].format, "Load file=%s failed, init yaml node failed");

    EXPECT_EQ(Parse("a: ["), PARSE_ERR_NO_STARTUP_FILE);
    EXPECT_EQ(log_.Take(), Lines({test_support::NotYaml(path_), LoadFailed(),
                                  test_support::ArrayIsNoMapping(), RootIsNoMapping()}));

    EXPECT_EQ(Parse(""), PARSE_ERR_NO_STARTUP_FILE);
    EXPECT_EQ(log_.Take(), Lines({test_support::NoRoot(path_), LoadFailed(), test_support::ArrayIsNoMapping(),
                                  RootIsNoMapping()}));
    EXPECT_TRUE(data_.empty());
}

TEST_F(ReplaceDataTest, ADenialHasNoCodeOfItsOwnHere)
{
    path_ = tree_.Write("replace.yaml", "cfgmgr_env: {A: 1}\n");
    const test_support::FailingFopen denied(path_, EACCES);

    EXPECT_EQ(parser_.ParseToReplaceData(path_, data_), PARSE_ERR_NO_STARTUP_FILE);

    EXPECT_EQ(log_.Take(), Lines({test_support::OpenFailed(path_), LoadFailed(),
                                  test_support::ArrayIsNoMapping(), RootIsNoMapping()}));
}

TEST_F(ReplaceDataTest, AMissingNodeInTheRootIsAFailureAndReadsNothing)
{
    const MissingNodes missing("GONE");

    EXPECT_EQ(Parse("cfgmgr_env: {A: 1}\nGONE: 1\n"), PARSE_ERR_NO_STARTUP_FILE);

    EXPECT_TRUE(data_.empty());
    EXPECT_EQ(log_.Take(), Lines({test_support::MissingNodeInArray(), RootIsNoMapping()}));
}

TEST_F(ReplaceDataTest, AMissingNodeInAValueLosesThatValueAlone)
{
    const MissingNodes missing("GONE");

    EXPECT_EQ(Parse("cfgmgr_env: {A: 1}\ncfgmgr_env: {B: 2, C: GONE}\ncfgmgr_env: {D: 4}\n"), 0U);

    EXPECT_EQ(data_, ReplaceData({{"A", "1"}, {"D", "4"}}));
    EXPECT_EQ(log_.Take(), Lines({test_support::MissingNodeInArray(), ValueIsNoMapping()}));
}

} // namespace
