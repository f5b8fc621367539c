#include "tool/commands/effective_yaml.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <syslog.h>

#include "startplan/parser.h"
#include "tests/support/random_seed.h"
#include "tests/support/temporary_tree.h"
#include "tool/configuration/configuration.h"
#include "tool/keys/settings.h"

namespace {

using Apps = std::vector<ApplicationManifest>;
using test_support::Random;
using test_support::TemporaryTree;

// Everything in the records but the file that they were read from.
tool::Json AllSettings(const Apps& apps)
{
    tool::Json all = tool::Json::array();
    for (const ApplicationManifest& app : apps) {
        tool::Json one = tool::Json::object();
        for (const tool::Setting& setting : tool::Settings()) {
            if (std::string_view(setting.name) != "file") {
                one[setting.name] = setting.value(app);
            }
        }
        all.push_back(std::move(one));
    }
    return all;
}

// The records of one startup file. Sets `isQuiet` to whether the library had nothing to object to.
Apps ReadStartupFile(const std::string& path, bool& isQuiet)
{
    tool::LogCollector log;
    Apps apps;
    isQuiet = ProcMgr::YamlParser().CreateApplicationByStartupFile(path, apps);
    for (const tool::LogLine& line : log.Take()) {
        isQuiet = isQuiet && line.priority >= LOG_INFO;
    }
    return apps;
}

void ExpectRoundTrip(const Apps& apps, const TemporaryTree& tree)
{
    const std::string yaml = tool::EffectiveYaml(apps);
    SCOPED_TRACE(yaml);

    bool isQuiet = false;
    const Apps again = ReadStartupFile(tree.Write("again.yaml", yaml), isQuiet);

    EXPECT_TRUE(isQuiet);
    EXPECT_EQ(AllSettings(apps), AllSettings(again));
}

// The first is empty; others begin like numbers, hold what YAML gives a meaning to, or what it cannot hold
// unescaped.
const std::vector<std::string> kAwkward = {
    "",
    " ",
    "~",
    "null",
    "yes",
    "No",
    "true",
    "untrue",
    "0",
    "007",
    "0x1F",
    "1e3",
    "-1",
    "1_000",
    "2026-10-04",
    "1:30",
    ".inf",
    "-",
    "--",
    "---",
    "...",
    "- a",
    "? a",
    "a: b",
    "a #b",
    "#a",
    "&a",
    "*a",
    "!a",
    "%a",
    "@a",
    "`a",
    "{a}",
    "[a, b]",
    "a,b",
    "|",
    ">",
    "'",
    "\"",
    "\\",
    "\\n",
    "a\nb",
    "\n",
    "a\n",
    "\ta",
    "a\r",
    " a",
    "a ",
    "\x7F",
    "\x01\x1B",
    "\xC2\x85",
    "\xC2\xA0",
    "\xE2\x80\xA8",
    "\xEF\xBB\xBF",
    "<<",
    "<1-3>",
    "\xC3\xA4",
    "\xE2\x82\xAC",
    "\xF0\x9F\x98\x80",
    "\xEF\xBF\xBE",
    "3000000000",
    "-3000000000",
};

std::string AwkwardText(Random& random)
{
    std::string text;
    for (std::size_t pieces = random.Below(3) + 1; pieces > 0; --pieces) {
        text += kAwkward[random.Below(kAwkward.size())];
    }
    return random.OneIn(40) ? text + std::string(1100, 'x') : text;
}

// Every byte of a one-byte character escaped, the others as they are or, where YAML wants it, escaped.
std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::uint32_t code = lead;
        const std::size_t more = lead >= 0xF0 ? 3U : lead >= 0xE0 ? 2U : lead >= 0xC0 ? 1U : 0U;
        code &= more == 0 ? 0x7FU : 0x3FU >> more;
        for (std::size_t j = 0; j < more; ++j) {
            code = code << 6U | (static_cast<unsigned char>(text[++i]) & 0x3FU);
        }
        char escape[16];
        std::snprintf(escape, sizeof escape, "\\U%08X", code);
        quoted += escape;
    }
    return quoted + "\"";
}

std::string AwkwardValue(const std::string& key, Random& random)
{
    const std::size_t count = random.Below(4);
    std::string value;
    for (std::size_t i = 0; i < count; ++i) {
        const bool isPool = key == "sharepool_groups";
        const char* const permissions[] = {"ro", "rw", "alloc"};
        value += i == 0 ? "" : ", ";
        if (key == "depends" || key == "arguments" || key == "core_affinity") {
            value += Quoted(AwkwardText(random));
        } else {
            value += Quoted(AwkwardText(random)) + ": " +
                     (isPool ? permissions[random.Below(3)] : Quoted(AwkwardText(random)));
        }
    }
    if (key == "depends" || key == "arguments" || key == "core_affinity") {
        return "[" + value + "]";
    }
    if (key == "env" || key == "cgroup_path" || key == "sharepool_groups") {
        return "{" + value + "}";
    }
    return Quoted(AwkwardText(random));
}

std::string AwkwardEntry(Random& random)
{
    std::string entry = "? " + Quoted(AwkwardText(random) + "a") +
                        "\n: bin_path: " + Quoted(AwkwardText(random) + "/b") + "\n";
    for (const tool::Setting& setting : tool::Settings()) {
        if (setting.keys.empty() || std::string_view(setting.name) == "bin_path" ||
            std::string_view(setting.name) == "device_id_pattern" || random.OneIn(3)) {
            continue;
        }
        const std::string key = setting.keys.front();
        entry += "  " + key + ": " +
                 (key == "restart" ? std::string("on-failure") : AwkwardValue(key, random)) + "\n";
    }
    return entry;
}

TEST(EffectiveYamlTest, TheVehicleTreeReadsAgainAsTheSameRecords)
{
    const TemporaryTree tree;
    std::filesystem::current_path(STARTPLAN_SOURCE_DIR);
    tool::ConfigurationRequest request;
    request.top = "examples/vehicle/top.yaml";
    request.replaceFile = "examples/vehicle/replace.yaml";
    const tool::Configuration configuration = tool::LoadConfiguration(request);
    ASSERT_EQ(0U, configuration.result);
    ASSERT_GT(configuration.apps.size(), 40U);

    ExpectRoundTrip(configuration.apps, tree);
}

TEST(EffectiveYamlTest, AwkwardValuesReadAgainAsTheSameRecords)
{
    const TemporaryTree tree;
    Random random;
    std::size_t records = 0;
    for (int round = 0; round < 60; ++round) {
        std::string file;
        for (int i = 0; i < 5; ++i) {
            file += AwkwardEntry(random);
        }
        SCOPED_TRACE(file);
        bool isQuiet = false;
        const Apps apps = ReadStartupFile(tree.Write("awkward.yaml", file), isQuiet);
        records += apps.size();
        ExpectRoundTrip(apps, tree);
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(records, 120U); // of 300; an entry whose uid is -1 is lost
}

TEST(EffectiveYamlTest, NoRecordsAreAnEmptyFile)
{
    EXPECT_EQ("{}\n", tool::EffectiveYaml({}));
}

TEST(EffectiveYamlTest, TextsThatOtherReadersWouldTakeForSomethingElseAreQuoted)
{
    const TemporaryTree tree;
    bool isQuiet = false;
    const Apps apps = ReadStartupFile(
        tree.Write("a.yaml", "a:\n  bin_path: /b\n  arguments: [yes, ~, 010, 1.5, plain]\n"), isQuiet);

    const std::string yaml = tool::EffectiveYaml(apps);

    EXPECT_NE(std::string::npos, yaml.find("  - \"yes\"\n  - \"~\"\n  - \"010\"\n  - \"1.5\"\n  - plain\n"))
        << yaml;
    EXPECT_NE(std::string::npos, yaml.find("  restart: \"no\"\n")) << yaml;
}

} // namespace
