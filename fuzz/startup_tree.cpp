// Question: does a whole tree of files give the records, the result and the log lines that its keys say,
// read one by one?
// Asserts beyond not crashing: ParseToApplication() against a walk put together from the public readers,
// record by record and line by line; ParseYaml() against the plain rule of the dependency table; a second
// parse gives the same; what was in the vector before stays; no memory kept; allocations in proportion to
// the text loaded and the values read.
// Refuses trees beyond 8 KiB (libyaml's quadratic loading) or of more than 40 startup files (see
// PlainStartupTree), and trees with a startup path on which the replacement never ends by the library's own
// promise (see placeholder_model.h).
// Input: files, each behind a line "=== X" where X is one lower-case letter: the file X.yaml. The tree starts
// at t.yaml and its replace data is r.yaml; text before the first such line belongs to t.yaml.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include "fuzz/fuzz_support.h"
#include "fuzz/plain_startup_tree.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"
#include "tests/support/log_capture.h"
#include "tests/support/manifest_builder.h"

namespace {

using fuzz::PlainStartupTree;
using test_support::Lines;
using test_support::LogCapture;
using Apps = std::vector<ApplicationManifest>;
using ReplaceData = std::map<std::string, std::string>;

constexpr std::size_t kMostBytes = 8192;
constexpr char kTop[] = "t.yaml";
constexpr char kReplaceData[] = "r.yaml";

std::vector<std::string> TextsOf(const Apps& apps)
{
    std::vector<std::string> texts;
    for (const ApplicationManifest& app : apps) {
        texts.push_back(test_support::TextOf(app));
    }
    return texts;
}

// The letter of a line "=== X", or 0.
char SeparatorIn(std::string_view line)
{
    return line.size() == 5 && line.substr(0, 4) == "=== " && line[4] >= 'a' && line[4] <= 'z' ? line[4]
                                                                                               : '\0';
}

void WriteFiles(std::string_view input)
{
    static const fuzz::InputFolder folder;
    std::map<char, std::string> files;
    char current = 't';
    files[current] = {};
    while (!input.empty()) {
        const std::string_view line = input.substr(0, input.find('\n'));
        if (const char next = SeparatorIn(line); next != '\0') {
            current = next;
            files[current]; // an empty file, if nothing follows
        } else {
            files[current].append(line).append("\n");
        }
        input.remove_prefix(std::min(line.size() + 1, input.size()));
    }
    static std::set<char> written;
    for (const char letter : written) {
        unlink((std::string(1, letter) + ".yaml").c_str());
    }
    written.clear();
    for (const auto& [letter, content] : files) {
        folder.Write((std::string(1, letter) + ".yaml").c_str(), content);
        written.insert(letter);
    }
}

void CheckParser(const PlainStartupTree& plain, const Lines& plainLines, const ReplaceData& replaceData)
{
    LogCapture log;
    Apps apps;
    const ProcMgr::YamlParser parser;
    const fuzz::AllocationMeter meter;
    FUZZ_REQUIRE(parser.ParseToApplication(kTop, apps, replaceData) == plain.result);
    FUZZ_REQUIRE(meter.Allocations() <= 2000 + 64 * (plain.bytesLoaded + plain.reads));
    FUZZ_REQUIRE(TextsOf(apps) == TextsOf(plain.apps));
    fuzz::RequireSameLines(log.Take(), plainLines);

    FUZZ_REQUIRE(parser.ParseToApplication(kTop, apps, replaceData) == plain.result);
    std::vector<std::string> twice = TextsOf(plain.apps);
    for (const std::string& text : TextsOf(plain.apps)) {
        twice.push_back(text);
    }
    FUZZ_REQUIRE(TextsOf(apps) == twice);
    fuzz::RequireSameLines(log.Take(), plainLines);
}

// The dependency table and the applications that stay, by the plain rule.
struct PlainFront {
    explicit PlainFront(const Apps& apps)
    {
        for (const ApplicationManifest& app : apps) {
            table[app.GetAppName()] = app.GetDependList();
        }
        for (const auto& [app, depends] : table) {
            for (const std::string& name : depends) {
                if (table.count(name) == 0) {
                    dropped.insert(app);
                    missingLines.insert("CheckApplicationsAndDepend error: app: " + app +
                                        " depends: " + name + " not in appList");
                }
            }
        }
        for (const std::string& app : dropped) {
            table.erase(app);
        }
        for (const ApplicationManifest& app : apps) {
            if (dropped.count(app.GetAppName()) == 0) {
                kept.push_back(test_support::TextOf(app));
            }
        }
    }

    ParseAndDepend::DependsMap table;
    std::set<std::string> dropped;
    std::set<std::string> missingLines;
    std::vector<std::string> kept;
};

void CheckFront(const PlainStartupTree& plain, const ReplaceData& replaceData)
{
    LogCapture log;
    ParseAndDepend front;
    Apps apps;
    const std::uint32_t result = front.ParseYaml(PARAM_TYPE_YAML, kTop, apps, replaceData);
    if (plain.result != 0) {
        FUZZ_REQUIRE(result == plain.result);
        FUZZ_REQUIRE(apps.empty() && apps.capacity() == 0);
        FUZZ_REQUIRE(front.GetApplicationDependsMap().empty());
        FUZZ_REQUIRE(log.Take().back().text == "InitApplicationsAndDepend ParseToApplication error");
        return;
    }
    const PlainFront expected(plain.apps);
    FUZZ_REQUIRE(result == (expected.dropped.empty() ? 0U : PARSE_ERR_DEPEND_NOT_FOUND));
    FUZZ_REQUIRE(TextsOf(apps) == expected.kept);
    FUZZ_REQUIRE(front.GetApplicationDependsMap() == expected.table);
    std::set<std::string> missingLines; // in the table's order, which is nobody's promise
    for (const test_support::LogLine& line : log.Take()) {
        if (line.format.rfind("CheckApplicationsAndDepend", 0) == 0) {
            FUZZ_REQUIRE(missingLines.insert(line.text).second);
        }
    }
    FUZZ_REQUIRE(missingLines == expected.missingLines);
}

// By now every cache is filled.
void CheckNothingIsKept(const ReplaceData& replaceData)
{
    const fuzz::AllocationMeter meter;
    {
        LogCapture log;
        Apps apps;
        ParseAndDepend().ParseYaml(PARAM_TYPE_YAML, kTop, apps, replaceData);
        log.Take(); // the capture keeps the room for the lines that it holds at its end
    }
    FUZZ_REQUIRE(meter.Kept() == 0);
}

// A capture for the plain walk and one for each call of the library: a capture forgets at its end.
Lines WalkPlainly(PlainStartupTree& plain, const ReplaceData& replaceData, bool& isRefused)
{
    LogCapture log;
    isRefused = !plain.Walk(kTop, replaceData);
    if (!isRefused) {
        plain.ReadStartupFiles();
    }
    return log.Take();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > kMostBytes) {
        return 0;
    }
    WriteFiles(fuzz::TextOf(data, size));
    ReplaceData replaceData;
    ParseAndDepend().ParseToReplaceData(PARAM_TYPE_YAML, kReplaceData, replaceData);
    PlainStartupTree plain;
    bool isRefused = false;
    const Lines plainLines = WalkPlainly(plain, replaceData, isRefused);
    if (isRefused) {
        return 0;
    }
    CheckParser(plain, plainLines, replaceData);
    CheckFront(plain, replaceData);
    CheckNothingIsKept(replaceData);
    return 0;
}
