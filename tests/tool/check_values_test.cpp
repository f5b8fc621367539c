// What the check says about a value, and what the library makes of it, side by side: the check is silent
// where the library reads just what is written and logs nothing, and only there.

#include "tool/check/check.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <syslog.h>

#include "tests/support/temporary_tree.h"
#include "tool/keys/key_table.h"

namespace {

using tool::FileKind;
using tool::Key;
using tool::KeyKind;
using tool::KeysOf;

struct Checked {
    tool::Configuration configuration;
    std::vector<tool::Finding> findings;

    bool HasLine() const
    {
        const tool::LogLines& lines = configuration.lines;
        return std::any_of(lines.begin(), lines.end(),
                           [](const tool::LogLine& line) { return line.priority <= LOG_WARNING; });
    }
    std::string Rules() const
    {
        std::string ids;
        for (const tool::Finding& finding : findings) {
            ids += std::string(finding.rule->id) + " ";
        }
        return ids;
    }
};

class CheckValuesTest : public testing::Test {
protected:
    Checked Check(const Key& key, const std::string& value)
    {
        const std::string program = key.isNeeded ? "" : "  bin_path: /bin/app\n";
        const std::string apps =
            tree_.Write("app.yaml", "app:\n" + program + "  " + key.name + ": " + value + "\n");
        const std::string top = tree_.Write("top.yaml", "startup_path_list: [" + apps + "]\n");
        Checked checked{tool::LoadConfiguration({top, "", {}}), {}};
        checked.findings = tool::Check(checked.configuration, {}, {}).findings;
        return checked;
    }

private:
    test_support::TemporaryTree tree_;
};

// "+007" as 7: what a person takes the text for, or nothing for what is no number.
std::string Canonical(const Key& key, std::string text)
{
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    const std::string sign = text.substr(0, 1) == "-" ? "-" : "";
    if (sign == "-" || text.substr(0, 1) == "+") {
        text.erase(0, 1);
    }
    const bool isHexadecimal = key.kind == KeyKind::HEXADECIMAL;
    const std::string digits = isHexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    if (isHexadecimal && text.substr(0, 2) == "0x") {
        text.erase(0, 2);
    }
    if (text.empty() || text.find_first_not_of(digits) != std::string::npos || text.size() > 12) {
        return "";
    }
    const std::string number = std::to_string(std::stoll(text, nullptr, isHexadecimal ? 16 : 10));
    return number == "0" ? number : sign + number;
}

constexpr const char* kNumberTexts[] = {
    "0",    "7",        "007",      "+5",         "\" 42 \"",   "-0",         "-1",          "-2",
    "255",  "256",      "300",      "2147483647", "2147483648", "4294967295", "-2147483648", "-2147483649",
    "1e3",  "2.5",      "2.5s",     "12_000",     "0x1F",       "0xZZ",       "0x",          "abc",
    "zz",   "null",     "~",        "\" \"",      "\"- 1\"",    "--1",        "1 2",         "99999999999",
    "0o17", "\"1\\n\"", "\"\\t8\"", "1f",         "10",         "0x123456789"};

TEST_F(CheckValuesTest, IsSilentAboutANumberOnlyIfTheLibraryReadsJustThat)
{
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        if (!IsNumber(key.kind) || key.kind == KeyKind::DEVICE_ID) {
            continue;
        }
        for (const char* text : kNumberTexts) {
            const Checked checked = Check(key, text);
            SCOPED_TRACE(std::string(key.name) + ": " + text + " is reported as " + checked.Rules());
            const std::string bare = std::string(text).find('\\') == std::string::npos
                                         ? std::string(text)
                                         : std::string(text[1] == '1' ? "1" : "8");
            std::string plain = bare;
            plain.erase(std::remove(plain.begin(), plain.end(), '"'), plain.end());
            const bool isRead = !checked.configuration.apps.empty() &&
                                key.value(checked.configuration.apps[0]).dump() == Canonical(key, plain);
            // Decimal digits for a hexadecimal number are read as such, and reported all the same.
            const bool isSurprise = checked.Rules() == "hex-surprise " && key.kind == KeyKind::HEXADECIMAL;
            EXPECT_EQ(isRead && !checked.HasLine(), checked.findings.empty() || isSurprise);
        }
    }
}

TEST_F(CheckValuesTest, IsSilentAboutAFlagOnlyIfItIsTrueOrFalse)
{
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        if (key.kind != KeyKind::FLAG || key.name == std::string("isDynamicPara")) {
            continue;
        }
        for (const char* text : {"true", "TRUE", "False", "\" true \"", "yes", "no", "1", "untrue",
                                 "truefalse", "~", "on", "t"}) {
            const Checked checked = Check(key, text);
            SCOPED_TRACE(std::string(key.name) + ": " + text + " is reported as " + checked.Rules());
            std::string plain = text;
            plain.erase(
                std::remove_if(plain.begin(), plain.end(), [](char c) { return c == '"' || c == ' '; }),
                plain.end());
            std::transform(plain.begin(), plain.end(), plain.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
            EXPECT_EQ(key.value(checked.configuration.apps.at(0)).dump() == plain, checked.findings.empty());
        }
    }
}

// Whatever makes the library warn is reported.
TEST_F(CheckValuesTest, IsNotSilentWhereTheLibraryIsNot)
{
    constexpr const char* kTexts[] = {"",        "\"\"",  "~",      "word",    "[]",
                                      "[a, b]",  "{}",    "{a: b}", "{a: RW}", "[[a], {}]",
                                      "{a: []}", "{a: }", "-1",     "300",     "{a: 1, a: 2}"};
    std::size_t warned = 0;
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        for (const char* text : kTexts) {
            const Checked checked = Check(key, text);
            // Who has an account is a question for the device, and what is an entry one for another check.
            const bool isOurs = key.kind != KeyKind::ACCOUNT && key.group != tool::KeyGroup::DEPENDENCIES;
            if (isOurs && checked.HasLine()) {
                ++warned;
                EXPECT_FALSE(checked.findings.empty()) << key.name << ": " << text;
            }
        }
    }
    EXPECT_GT(warned, 50U);
}

TEST_F(CheckValuesTest, MakesAnErrorOfWhatMakesRoot)
{
    for (const char* name : {"uid", "gid"}) {
        for (const char* text : {"", "nobody", "0x1F", "~"}) {
            const Checked checked = Check(*FindKey(FileKind::STARTUP, name), text);
            ASSERT_EQ(1U, checked.findings.size()) << name << ": " << text;
            EXPECT_EQ(tool::Level::ERROR, checked.findings[0].level);
            EXPECT_NE(std::string::npos, checked.findings[0].effect.find("0, which is root"));
        }
        EXPECT_EQ(tool::Level::WARNING,
                  Check(*FindKey(FileKind::STARTUP, name), "12abc").findings.at(0).level);
        EXPECT_TRUE(Check(*FindKey(FileKind::STARTUP, name), "0").findings.empty());
    }
}

} // namespace
