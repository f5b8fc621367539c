// Numbers against the plain model: every short text of a telling alphabet, many long ones at random, and
// both again under a locale that groups digits.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/log_capture.h"
#include "tests/support/random_seed.h"
#include "tests/support/stream_numbers.h"
#include "tests/support/yaml_snippet.h"

using ProcMgr::KvsTypeYaml;
using test_support::GroupedDigits;
using test_support::StreamNumber;

namespace {

const std::string kAlphabet = "019-+ \tx.e,";

// Every text of at most this length; 16,105 of them for 4.
std::vector<std::string> AllTexts(std::size_t maxLength)
{
    std::vector<std::string> texts = {""};
    std::size_t begin = 0;
    for (std::size_t length = 1; length <= maxLength; ++length) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const char c : kAlphabet) {
                texts.push_back(texts[begin] + c);
            }
        }
    }
    return texts;
}

// Mostly digits, some 20 of them and up to 90, so that every limit is crossed.
std::vector<std::string> RandomTexts(std::size_t count)
{
    test_support::Random random;
    std::vector<std::string> texts(count);
    for (std::string& text : texts) {
        const bool isPure = random.OneIn(2);
        text = isPure && random.OneIn(3) ? "-" : "";
        for (std::size_t left = random.Below(91); left > 0; --left) {
            text += isPure || !random.OneIn(7) ? random.Text("0123456789", 1) : random.Text(kAlphabet, 1);
        }
    }
    return texts;
}

// The values around each limit, with and without zeros and group separators.
std::vector<std::string> LimitTexts()
{
    std::vector<std::string> texts;
    for (const char* number : {"2147483646",
                               "2147483647",
                               "2147483648",
                               "2147483649",
                               "4294967294",
                               "4294967295",
                               "4294967296",
                               "4294967297",
                               "9223372036854775806",
                               "9223372036854775807",
                               "9223372036854775808",
                               "9223372036854775809",
                               "18446744073709551614",
                               "18446744073709551615",
                               "18446744073709551616",
                               "18446744073709551617",
                               "184467440737095516150",
                               "1,000",
                               "1,000,000",
                               "10,00",
                               ",100",
                               "1,,000",
                               "1,000,",
                               "12,345,678,901,234,567,890",
                               "2,147,483,648",
                               "0,000",
                               "0001,000"}) {
        for (const char* sign : {"", "-", "+", " ", "0", "-0", "00000000000000000000000000"}) {
            for (const char* tail : {"", "0", ".5", " 1"}) {
                texts.push_back(std::string(sign) + number + tail);
            }
        }
    }
    return texts;
}

void ExpectTheModelsNumbers(const std::vector<std::string>& texts)
{
    const KvsTypeYaml root = test_support::Load(test_support::SequenceOf(texts));
    ASSERT_EQ(root.GetSequenceString(), texts); // the file holds what was meant

    const std::vector<KvsTypeYaml> handles = root.GetSequenceYamlNode();
    const std::vector<std::uint32_t> numbers = root.GetSequenceUint32();

    ASSERT_EQ(handles.size(), texts.size());
    ASSERT_EQ(numbers.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE("text " + testing::PrintToString(texts[i]));
        ASSERT_EQ(handles[i].GetInt(), StreamNumber<int>(texts[i]));
        ASSERT_EQ(handles[i].GetUint64(), StreamNumber<std::uint64_t>(texts[i]));
        ASSERT_EQ(numbers[i], StreamNumber<std::uint32_t>(texts[i]));
    }
}

class NumberReadingTest : public testing::Test {
protected:
    ~NumberReadingTest() override { EXPECT_EQ(log_.Take(), test_support::Lines()); }

    test_support::LogCapture log_;
};

TEST_F(NumberReadingTest, EveryTextOfUpToFourCharactersAgreesWithThePlainModel)
{
    ExpectTheModelsNumbers(AllTexts(4));
}

TEST_F(NumberReadingTest, TextsAroundEveryLimitAgreeWithThePlainModel)
{
    ExpectTheModelsNumbers(LimitTexts());
}

TEST_F(NumberReadingTest, RandomTextsAgreeWithThePlainModel)
{
    ExpectTheModelsNumbers(RandomTexts(20000));
}

TEST_F(NumberReadingTest, ALocaleThatGroupsDigitsIsFollowed)
{
    {
        const GroupedDigits grouped;
        EXPECT_EQ(test_support::LoadValue("12,345").GetInt(), 12345);
        EXPECT_EQ(test_support::LoadValue("12,345").GetUint64(), 12345U);
        EXPECT_EQ(test_support::Load("['12,345']").GetSequenceUint32(), std::vector<std::uint32_t>({12345}));
    }
    EXPECT_EQ(test_support::LoadValue("12,345").GetInt(), 12);
}

TEST_F(NumberReadingTest, EveryTextOfUpToFourCharactersAgreesUnderALocaleThatGroupsDigits)
{
    const GroupedDigits grouped;
    ExpectTheModelsNumbers(AllTexts(4));
}

TEST_F(NumberReadingTest, LimitsAndRandomTextsAgreeUnderALocaleThatGroupsDigits)
{
    const GroupedDigits grouped;
    ExpectTheModelsNumbers(LimitTexts());
    ExpectTheModelsNumbers(RandomTexts(10000));
}

} // namespace
