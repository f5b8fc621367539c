// Question: is a path rewritten as the plain in-place replacement does it, with any names and values that a
// replace-data file can hold?
// Asserts beyond not crashing: map, result and log lines of the file as read key by key through handles; a
// second reading changes nothing (the first value of a name wins); the path as by plain replacement; an
// empty map changes nothing; no memory kept; allocations in proportion to the input.
// Refuses a path on which the search never ends by the library's own promise (see placeholder_model.h), and
// inputs beyond 8 KiB (libyaml's quadratic loading).
// Input: the replace-data file up to the last newline; behind it the path.

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <syslog.h>

#include "fuzz/fuzz_support.h"
#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "tests/support/log_capture.h"
#include "tests/support/placeholder_model.h"

namespace {

using ProcMgr::KvsTypeYaml;
using ProcMgr::YamlParser;
using test_support::Lines;
using test_support::LogCapture;
using ReplaceData = std::map<std::string, std::string>;

constexpr std::size_t kMostBytes = 8192;
constexpr char kFile[] = "replace.yaml";

// Through the handle's public readers. It logs its own lines between theirs.
std::uint32_t PlainRead(ReplaceData& replaceData)
{
    KvsTypeYaml root;
    if (!root.InitYamlNode(kFile)) {
        syslog(LOG_ERR, "Load file=%s failed, init yaml node failed", kFile);
        root = KvsTypeYaml();
    }
    std::vector<KvsTypeYaml> sections;
    if (!root.GetArray(sections)) {
        syslog(LOG_ERR, "CreateVehicleData failed, %s is invalid yaml file, first layer is not an array!",
               kFile);
        return PARSE_ERR_NO_STARTUP_FILE;
    }
    for (const KvsTypeYaml& section : sections) {
        if (section.GetKey() != "cfgmgr_env") {
            continue;
        }
        std::vector<KvsTypeYaml> names;
        if (!section.GetArray(names)) {
            syslog(LOG_ERR, "CreateVehicleData failed, %s is invalid yaml file, %s 's value is not an array!",
                   kFile, "cfgmgr_env");
            continue;
        }
        for (const KvsTypeYaml& name : names) {
            replaceData.insert({name.GetKey(), name.GetString()});
        }
    }
    return 0;
}

ReplaceData CheckReading()
{
    const YamlParser parser;
    LogCapture log;
    ReplaceData expected = {{"KEPT", "old"}};
    const std::uint32_t expectedResult = PlainRead(expected);
    const Lines expectedLines = log.Take();

    ReplaceData read = {{"KEPT", "old"}};
    FUZZ_REQUIRE(parser.ParseToReplaceData(kFile, read) == expectedResult);
    FUZZ_REQUIRE(read == expected);
    fuzz::RequireSameLines(log.Take(), expectedLines);

    FUZZ_REQUIRE(parser.ParseToReplaceData(kFile, read) == expectedResult);
    FUZZ_REQUIRE(read == expected);
    return read;
}

void CheckReplacing(const std::string& path, const ReplaceData& replaceData)
{
    const std::optional<std::string> expected = test_support::ReplacedIfItEnds(path, replaceData);
    if (!expected) {
        return;
    }
    const YamlParser parser;
    LogCapture log;
    std::string replaced = path;
    const fuzz::AllocationMeter meter;
    parser.ReplaceByMatchDataInPath(replaced, replaceData);
    FUZZ_REQUIRE(meter.Allocations() <= 16 + path.size());
    FUZZ_REQUIRE(replaced == *expected);
    FUZZ_REQUIRE(log.Take().empty());

    replaced = path;
    parser.ReplaceByMatchDataInPath(replaced, {});
    FUZZ_REQUIRE(replaced == path);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > kMostBytes) {
        return 0;
    }
    static const fuzz::InputFolder folder;
    const std::string_view input = fuzz::TextOf(data, size);
    const std::size_t newline = input.rfind('\n');
    const std::string_view file = newline == std::string_view::npos ? input : input.substr(0, newline);
    const std::string path(newline == std::string_view::npos ? input : input.substr(newline + 1));
    folder.Write(kFile, file);

    CheckReplacing(path, CheckReading());
    const fuzz::AllocationMeter meter; // from the second time on, when every cache is filled
    CheckReplacing(path, CheckReading());
    FUZZ_REQUIRE(meter.Kept() == 0);
    FUZZ_REQUIRE(meter.Allocations() <= 1000 + 256 * size);

    // Short names over few letters, so that names inside names are met.
    CheckReplacing(path, {{"A", "${B}"}, {"B", ""}, {"${A", "x"}, {"AB", "${"}});
    CheckReplacing(path, {{"", "empty"}, {"A", "}${A}"}});
    return 0;
}
