// What one node reads as: text, number, boolean, "is it empty".

#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/log_capture.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using test_support::Lines;
using test_support::LoadValue;

namespace {

constexpr std::uint64_t maxUint64 = std::numeric_limits<std::uint64_t>::max();

class ScalarValuesTest : public testing::Test {
protected:
    ~ScalarValuesTest() override { EXPECT_EQ(log_.Take(), Lines()); } // the readers of scalars never log

    test_support::LogCapture log_;
};

struct TextCase {
    const char* yaml;
    std::string text;
    bool isNull;
};
const TextCase kTextCases[] = {
    {"plain", "plain", false},
    {"two words", "two words", false},
    {"' kept '", " kept ", false},
    {"", "", true},
    {"\"\"", "", true},
    {"''", "", true},
    {"!!str", "", true},
    {"null", "null", false}, // no spelling is null
    {"~", "~", false},
    {"\" \"", " ", false},
    {"\"tail\\0cut off\"", "tail", false}, // up to the first NUL
    {"\"\\0hidden\"", "", true},
    {"\"\\xe4\"", "\xc3\xa4", false},
    {"|\n  line 1\n  line 2\n", "line 1\nline 2\n", false},
    {"[a]", "", false},
    {"[]", "", false},
    {"{a: b}", "", false},
    {"{}", "", false},
};

TEST_F(ScalarValuesTest, TextIsTheScalarUpToItsFirstNulAndOnlyAnEmptyScalarIsNull)
{
    for (const TextCase& c : kTextCases) {
        SCOPED_TRACE(c.yaml);
        const KvsTypeYaml value = LoadValue(c.yaml);

        EXPECT_EQ(value.GetString(), c.text);
        EXPECT_EQ(value.GetIsNullOfScalarType(), c.isNull);
    }
}

struct NumberCase {
    const char* yaml;
    int asInt;
    std::uint64_t asUint64;
};
const NumberCase kNumberCases[] = {
    {"42", 42, 42},
    {"\" 42 \"", 42, 42},
    {"\"\\t\\n 42\"", 42, 42},
    {"-7", -7, 18446744073709551609U},
    {"+7", 7, 7},
    {"12abc", 12, 12},
    {"1.9", 1, 1},
    {"010", 10, 10},
    {"0x1F", 0, 0},
    {"abc", 0, 0},
    {"\"-\"", 0, 0},
    {"+-1", 0, 0},
    {"\"- 1\"", 0, 0},
    {"null", 0, 0},
    {"", 0, 0},
    {"\"\"", 0, 0},
    {"\"   \"", 0, 0}, // nothing to read leaves 0
    {"\"\\t\"", 0, 0},
    {"\"12\\x003\"", 12, 12},
    {"2147483647", 2147483647, 2147483647},
    {"2147483648", 2147483647, 2147483648},
    {"-2147483648", std::numeric_limits<int>::min(), maxUint64 - 2147483647U},
    {"-2147483649", std::numeric_limits<int>::min(), maxUint64 - 2147483648U},
    {"3000000000", 2147483647, 3000000000U},
    {"-3000000000", std::numeric_limits<int>::min(), maxUint64 - 2999999999U},
    {"-1", -1, maxUint64},
    {"9223372036854775808", 2147483647, 9223372036854775808U},
    {"18446744073709551615", 2147483647, maxUint64},
    {"18446744073709551616", 2147483647, maxUint64},
    {"99999999999999999999999999", 2147483647, maxUint64},
    {"-99999999999999999999999999", std::numeric_limits<int>::min(), maxUint64},
    {"[42]", 0, 0},
    {"{42: 42}", 0, 0},
};

TEST_F(ScalarValuesTest, NumbersAreReadToTheFirstNonDigitAndLimitedToTheirType)
{
    for (const NumberCase& c : kNumberCases) {
        SCOPED_TRACE(c.yaml);
        const KvsTypeYaml value = LoadValue(c.yaml);

        EXPECT_EQ(value.GetInt(), c.asInt);
        EXPECT_EQ(value.GetUint64(), c.asUint64);
    }
}

struct BoolCase {
    const char* yaml;
    bool value;
};
const BoolCase kBoolCases[] = {
    {"true", true},      {"True", true},          {"TRUE", true},         {"tRuE", true},
    {"\" true\"", true}, {"untrue", true},        {"trueish", true},      {"not true", true},
    {"truetrue", true},  {"ttrue", true},         {"trtrue", true},       {"\"true\\0\"", true},
    {"yes", false},      {"on", false},           {"1", false},           {"y", false},
    {"false", false},    {"tru", false},          {"tr ue", false},       {"", false},
    {"\"\"", false},     {"null", false},         {"\"\\0true\"", false}, {"\"tr\\0ue\"", false},
    {"[true]", false},   {"{true: true}", false},
};

TEST_F(ScalarValuesTest, TheWordTrueAnywhereInAnyCaseIsTrue)
{
    for (const BoolCase& c : kBoolCases) {
        SCOPED_TRACE(c.yaml);
        EXPECT_EQ(LoadValue(c.yaml).GetBool(), c.value);
    }
}

TEST_F(ScalarValuesTest, AHandleOnNothingReadsAsNothing)
{
    const KvsTypeYaml nothing;

    EXPECT_EQ(nothing.GetKey(), "");
    EXPECT_EQ(nothing.GetString(), "");
    EXPECT_EQ(nothing.GetInt(), 0);
    EXPECT_EQ(nothing.GetUint64(), 0U);
    EXPECT_FALSE(nothing.GetBool());
    EXPECT_FALSE(nothing.GetIsNullOfScalarType());
}

TEST_F(ScalarValuesTest, AnAliasReadsAsTheNodeItNames)
{
    const KvsTypeYaml root = test_support::Load("a: &x 17\nb: *x\n");

    EXPECT_EQ(test_support::At(root, "b").GetInt(), 17);
    EXPECT_EQ(test_support::At(root, "b").GetKey(), "b");
}

TEST_F(ScalarValuesTest, AScalarMayBeTheRoot)
{
    EXPECT_EQ(test_support::Load("42\n").GetInt(), 42);
    EXPECT_EQ(test_support::Load("42\n").GetKey(), "");
}

} // namespace
