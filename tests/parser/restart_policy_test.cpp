// The four restart policies and what everything else becomes.

#include <string>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "tests/support/log_capture.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using test_support::Lines;
using test_support::Load;

namespace {

class RestartPolicyTest : public testing::Test {
protected:
    const ProcMgr::YamlParser parser_{};
    test_support::LogCapture log_;
};

TEST_F(RestartPolicyTest, TheFourPoliciesAreTakenAsTheyAre)
{
    for (const std::string policy : {"no", "on-failure", "on-forever", "on-until-succeed"}) {
        EXPECT_EQ(parser_.GetRestart(Load("restart: " + policy + "\n")), policy);
        EXPECT_EQ(parser_.GetRestart(Load("restart: '" + policy + "'\n")), policy);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(RestartPolicyTest, AnAbsentKeyIsNoWithoutAWord)
{
    EXPECT_EQ(parser_.GetRestart(Load("{}")), "no");
    EXPECT_EQ(parser_.GetRestart(Load("{Restart: on-failure}")), "no");
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(RestartPolicyTest, EverythingElseIsNoWithAWarning)
{
    for (const char* value : {"", "''", "always", "No", "NO", "On-Failure", "on-failure2", "on-fail", "'no '",
                              "' no'", "null", "false", "on_failure", "[no]", "{no: no}", "\"\\0no\""}) {
        SCOPED_TRACE(value);

        EXPECT_EQ(parser_.GetRestart(Load("restart: " + std::string(value) + "\n")), "no");

        EXPECT_EQ(log_.Take(),
                  Lines({{LOG_WARNING,
                          "ParseYamlToApplicationManifest restart cfg is invalid, set default value !"}}));
    }
}

TEST_F(RestartPolicyTest, TheTextEndsAtItsFirstNul)
{
    EXPECT_EQ(parser_.GetRestart(Load("restart: \"on-forever\\0x\"\n")), "on-forever");
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(RestartPolicyTest, AnEntryThatCannotBeSearchedHasNoPolicy)
{
    const test_support::MissingNodes missing("GONE");

    EXPECT_EQ(parser_.GetRestart(Load("[restart]")), "no");
    EXPECT_EQ(parser_.GetRestart(Load("{GONE: 1, restart: on-failure}")), "no");

    EXPECT_EQ(log_.Take(),
              Lines({test_support::NoMappingFor("restart"), test_support::MissingNodeBefore("restart")}));
}

} // namespace
