// The readers of one value each: with a default, and the ones that check.

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "tests/support/log_capture.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using test_support::Lines;
using test_support::Load;
using test_support::MissingNodes;

namespace {

using Numbers = std::vector<std::uint32_t>;

class ScalarReadersTest : public testing::Test {
protected:
    const ProcMgr::YamlParser parser_{};
    test_support::LogCapture log_;
};

TEST_F(ScalarReadersTest, AnAbsentKeyGivesTheDefault)
{
    const KvsTypeYaml entry = Load("{other: 1}");

    EXPECT_EQ(parser_.GetIntValue(entry, "k", -5), -5);
    EXPECT_EQ(parser_.GetUintValue(entry, "k", 4294967295U), 4294967295U);
    EXPECT_TRUE(parser_.GetBoolValue(entry, "k", true));
    EXPECT_FALSE(parser_.GetBoolValue(entry, "k", false));
    EXPECT_EQ(parser_.GetStrValue(entry, "k", " def "), " def ");
    EXPECT_EQ(log_.Take(), Lines());
}

struct PresentCase {
    const char* value;
    std::int32_t asInt;
    std::uint32_t asUint;
    bool asBool;
    const char* asText;
};
const PresentCase kPresentCases[] = {
    {"", 0, 0, false, ""},
    {"''", 0, 0, false, ""},
    {"null", 0, 0, false, "null"},
    {"[1, true]", 0, 0, false, ""},
    {"{a: 1}", 0, 0, false, ""},
    {"42", 42, 42, false, "42"},
    {"2.5s", 2, 2, false, "2.5s"},
    {"-1", -1, 4294967295U, false, "-1"},
    {"3000000000", 2147483647, 2147483647U, false, "3000000000"},
    {"-3000000000", -2147483647 - 1, 2147483648U, false, "-3000000000"},
    {"2147483648", 2147483647, 2147483647U, false, "2147483648"},
    {"-2147483648", -2147483647 - 1, 2147483648U, false, "-2147483648"},
    {"Untrue", 0, 0, true, "Untrue"},
    {"yes", 0, 0, false, "yes"},
};

TEST_F(ScalarReadersTest, APresentKeyNeverGivesTheDefault)
{
    for (const PresentCase& c : kPresentCases) {
        SCOPED_TRACE(c.value);
        const KvsTypeYaml entry = Load("other: 9\nk: " + std::string(c.value) + "\n");

        EXPECT_EQ(parser_.GetIntValue(entry, "k", 77), c.asInt);
        EXPECT_EQ(parser_.GetUintValue(entry, "k", 77), c.asUint);
        EXPECT_EQ(parser_.GetBoolValue(entry, "k", !c.asBool), c.asBool);
        EXPECT_EQ(parser_.GetStrValue(entry, "k", "default"), c.asText);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ScalarReadersTest, OfARepeatedKeyTheFirstCounts)
{
    EXPECT_EQ(parser_.GetIntValue(Load("{k: 1, k: 2}"), "k", 0), 1);
}

TEST_F(ScalarReadersTest, AnEntryThatIsNoMappingGivesEveryDefaultWithAWarningForEachKey)
{
    for (const KvsTypeYaml& entry : {Load("text"), Load("[k]"), KvsTypeYaml()}) {
        Numbers cores = {5};

        EXPECT_EQ(parser_.GetIntValue(entry, "a", 1), 1);
        EXPECT_EQ(parser_.GetUintValue(entry, "b", 2), 2U);
        EXPECT_TRUE(parser_.GetBoolValue(entry, "c", true));
        EXPECT_EQ(parser_.GetStrValue(entry, "d", "def"), "def");
        EXPECT_EQ(parser_.GetStartupPriority(entry), -1);
        EXPECT_EQ(parser_.GetNodeType(entry), 0U);
        parser_.GetCodeAffinity(cores, entry);
        EXPECT_FALSE(parser_.GetIsDynamicPara(entry));
        EXPECT_FALSE(parser_.GetIsDelayCoreAffinity(entry));

        EXPECT_EQ(cores, Numbers({5}));
        Lines expected;
        for (const char* key :
             {"a", "b", "c", "d", "startup_priority", "node_type", "core_affinity", "isDynamicPara"}) {
            expected.push_back(test_support::NoMappingFor(key));
        }
        EXPECT_EQ(log_.Take(), expected);
    }
}

TEST_F(ScalarReadersTest, AKeyBehindAMissingNodeCountsAsAbsent)
{
    const MissingNodes missing("GONE");
    const KvsTypeYaml entry = Load("{GONE: 0, a: 1, b: 1, c: true, d: x, startup_priority: 1, node_type: 1, "
                                   "core_affinity: [1], isDynamicPara: true}");
    Numbers cores = {5};

    EXPECT_EQ(parser_.GetIntValue(entry, "a", -9), -9);
    EXPECT_EQ(parser_.GetUintValue(entry, "b", 9), 9U);
    EXPECT_FALSE(parser_.GetBoolValue(entry, "c", false));
    EXPECT_EQ(parser_.GetStrValue(entry, "d", "def"), "def");
    EXPECT_EQ(parser_.GetStartupPriority(entry), -1);
    EXPECT_EQ(parser_.GetNodeType(entry), 0U);
    parser_.GetCodeAffinity(cores, entry);
    EXPECT_FALSE(parser_.GetIsDynamicPara(entry));

    EXPECT_EQ(cores, Numbers({5}));
    Lines expected;
    for (const char* key :
         {"a", "b", "c", "d", "startup_priority", "node_type", "core_affinity", "isDynamicPara"}) {
        expected.push_back(test_support::MissingNodeBefore(key));
    }
    EXPECT_EQ(log_.Take(), expected);
}

TEST_F(ScalarReadersTest, TheNameIsTheKeyOfTheEntryWhateverTheEntryIs)
{
    std::vector<KvsTypeYaml> entries;
    ASSERT_TRUE(Load("{web: {bin_path: /w}, 'two words': text, '': [a]}").GetArray(entries));

    EXPECT_EQ(parser_.GetAppName(entries.at(0)), "web");
    EXPECT_EQ(parser_.GetAppName(entries.at(1)), "two words");
    EXPECT_EQ(parser_.GetAppName(entries.at(2)), "");
    EXPECT_EQ(parser_.GetAppName(KvsTypeYaml()), "");

    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_INFO, "Get app name when parsing Yaml file, appName=web"},
                            {LOG_INFO, "Get app name when parsing Yaml file, appName=two words"},
                            {LOG_INFO, "Get app name when parsing Yaml file, appName="},
                            {LOG_INFO, "Get app name when parsing Yaml file, appName="}}));
    EXPECT_EQ(lines[0].format, "Get app name when parsing Yaml file, appName=%s");
}

TEST_F(ScalarReadersTest, APriorityIsInRangeOrMinusOne)
{
    struct Case {
        const char* value;
        std::int32_t priority;
        const char* rejected;
    };
    for (const Case& c : {Case{"0", 0, nullptr}, Case{"1", 1, nullptr}, Case{"255", 255, nullptr},
                          Case{"' 17 '", 17, nullptr}, Case{"9.9", 9, nullptr}, Case{"abc", 0, nullptr},
                          Case{"null", 0, nullptr}, Case{"[300]", 0, nullptr}, Case{"{a: 1}", 0, nullptr},
                          Case{"' '", 0, nullptr}, Case{"", -1, nullptr}, Case{"''", -1, nullptr},
                          Case{"256", -1, "256"}, Case{"-1", -1, "-1"}, Case{"-256", -1, "-256"},
                          Case{"99999999999", -1, "2147483647"}, Case{"-99999999999", -1, "-2147483648"}}) {
        SCOPED_TRACE(c.value);
        const KvsTypeYaml entry = Load("startup_priority: " + std::string(c.value) + "\n");

        EXPECT_EQ(parser_.GetStartupPriority(entry), c.priority);

        const Lines lines = log_.Take();
        if (c.rejected == nullptr) {
            EXPECT_EQ(lines, Lines());
            continue;
        }
        ASSERT_EQ(lines, Lines({{LOG_WARNING, "ParseYamlToApplicationManifest GetStartupPriority=" +
                                                  std::string(c.rejected) + " is not in 0-255"}}));
        EXPECT_EQ(lines[0].format, "ParseYamlToApplicationManifest GetStartupPriority=%d is not in 0-255");
    }
    EXPECT_EQ(parser_.GetStartupPriority(Load("{}")), -1);
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ScalarReadersTest, ANodeTypeIsReadAsHexadecimal)
{
    struct Case {
        const char* value;
        std::uint32_t type;
    };
    // A number beyond unsigned long is that type's maximum first; what fits loses its upper bits.
    const bool isLong32 = std::numeric_limits<unsigned long>::digits == 32;
    for (const Case& c :
         {Case{"10", 16}, Case{"0xFF", 255}, Case{"0XfF", 255}, Case{"1f", 31}, Case{"0x1F", 31},
          Case{"' \t7'", 7}, Case{"+a", 10}, Case{"-1", 0xFFFFFFFFU}, Case{"-0x10", 0xFFFFFFF0U},
          Case{"FFFFFFFF", 0xFFFFFFFFU}, Case{"123456789", isLong32 ? 0xFFFFFFFFU : 0x23456789U},
          Case{"100000000", isLong32 ? 0xFFFFFFFFU : 0}, Case{"12xyz", 0x12}, Case{"zz", 0}, Case{"0x", 0},
          Case{"' '", 0}, Case{"null", 0}, Case{"010", 16}, Case{"ffffffffffffffffffff", 0xFFFFFFFFU}}) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(parser_.GetNodeType(Load("node_type: " + std::string(c.value) + "\n")), c.type);
    }
    EXPECT_EQ(parser_.GetNodeType(Load("{}")), 0U);
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ScalarReadersTest, ANodeTypeWithoutATextIsWarnedOf)
{
    for (const char* value : {"", "''", "\"\\x001\"", "[10]", "{a: 10}"}) {
        SCOPED_TRACE(value);

        EXPECT_EQ(parser_.GetNodeType(Load("node_type: " + std::string(value) + "\n")), 0U);

        EXPECT_EQ(log_.Take(), Lines({{LOG_WARNING, "ParseYamlToApplicationManifest node_type is null !"}}));
    }
}

TEST_F(ScalarReadersTest, CoresReplaceTheListUnlessTheKeyIsAbsent)
{
    struct Case {
        const char* entry;
        Numbers cores;
    };
    for (const Case& c :
         {Case{"{core_affinity: [0, 3]}", {0, 3}}, Case{"{core_affinity: [-1, x, '']}", {4294967295U, 0, 0}},
          Case{"{core_affinity: []}", {}}, Case{"{core_affinity: 3}", {}},
          Case{"{core_affinity: {a: 3}}", {}}, Case{"{core_affinity: }", {}},
          Case{"{code_affinity: [7]}", {8, 9}}, Case{"{}", {8, 9}}}) {
        SCOPED_TRACE(c.entry);
        Numbers cores = {8, 9};

        parser_.GetCodeAffinity(cores, Load(c.entry));

        EXPECT_EQ(cores, c.cores);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ScalarReadersTest, AMissingCoreEmptiesTheList)
{
    const MissingNodes missing("GONE");
    Numbers cores = {8, 9};

    parser_.GetCodeAffinity(cores, Load("{core_affinity: [1, GONE]}"));

    EXPECT_EQ(cores, Numbers());
    EXPECT_EQ(log_.Take(), Lines({test_support::MissingUint32Item()}));
}

TEST_F(ScalarReadersTest, TheDynamicFlagHasAKeyInCamelCase)
{
    EXPECT_TRUE(parser_.GetIsDynamicPara(Load("{isDynamicPara: True}")));
    EXPECT_FALSE(parser_.GetIsDynamicPara(Load("{isDynamicPara: yes}")));
    EXPECT_FALSE(parser_.GetIsDynamicPara(Load("{isDynamicPara: }")));
    EXPECT_FALSE(parser_.GetIsDynamicPara(Load("{is_dynamic_para: true, isdynamicpara: true}")));
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ScalarReadersTest, TheDelayFlagIsFalseWithoutALook)
{
    EXPECT_FALSE(parser_.GetIsDelayCoreAffinity(Load("{is_delay_core_affinity: true, delay: true}")));
    EXPECT_FALSE(parser_.GetIsDelayCoreAffinity(KvsTypeYaml()));
    EXPECT_EQ(log_.Take(), Lines());
}

} // namespace
