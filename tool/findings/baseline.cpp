#include "tool/findings/baseline.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/command_line/session.h"
#include "tool/source/file_guard.h"
#include "tool/text/failure.h"
#include "tool/text/output.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

std::string ReadText(const std::string& path)
{
    if (const auto reason = RefuseFile(path)) {
        throw Failure(fmt::format("the baseline \"{}\" {}", path, *reason));
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file || file.bad()) {
        throw Failure(fmt::format("cannot read the baseline \"{}\": {}", path, std::strerror(errno)));
    }
    return text;
}

} // namespace

Baseline::Key Baseline::KeyOf(const Finding& finding)
{
    return {finding.rule->id, Printable(finding.position.file), finding.message};
}

Baseline Baseline::Read(const std::string& path)
{
    const Json json = Json::parse(ReadText(path), nullptr, false);
    Baseline baseline;
    try {
        if (json.is_discarded() || json.at("format") != "startplan-baseline" || json.at("version") != 1) {
            throw Failure(fmt::format("\"{}\" is no baseline; write one with --write-baseline", path));
        }
        for (const Json& one : json.at("findings")) {
            const Key key(one.at("rule"), one.at("file"), one.at("message"));
            baseline.counts_[key] += one.at("count").get<std::size_t>();
        }
    } catch (const Json::exception&) {
        throw Failure(fmt::format("\"{}\" is no baseline; write one with --write-baseline", path));
    }
    return baseline;
}

void Baseline::Write(const std::string& path, const std::vector<Finding>& findings)
{
    Json json = JsonDocument("baseline");
    Json& list = json["findings"] = Json::array();
    std::map<Key, std::size_t> places;
    for (const Finding& finding : findings) {
        const auto [place, isNew] = places.emplace(KeyOf(finding), list.size());
        if (isNew) {
            const auto& [rule, file, message] = place->first;
            list.push_back({{"rule", rule}, {"file", file}, {"message", message}, {"count", 0}});
        }
        Json& count = list[place->second]["count"];
        count = count.get<std::size_t>() + 1;
    }
    Output output(path);
    output.Add(json.dump(2, ' ', false, Json::error_handler_t::replace));
    output.Add("\n");
    output.Commit();
}

std::size_t Baseline::Hide(std::vector<Finding>& findings)
{
    const std::size_t before = findings.size();
    const auto isKnown = [this](const Finding& finding) {
        const auto count = counts_.find(KeyOf(finding));
        if (count == counts_.end() || count->second == 0) {
            return false;
        }
        --count->second;
        return true;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isKnown), findings.end());
    return before - findings.size();
}

std::size_t Baseline::Left() const
{
    std::size_t left = 0;
    for (const auto& [key, count] : counts_) {
        left += count;
    }
    return left;
}

} // namespace tool
