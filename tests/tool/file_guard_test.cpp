#include "tool/source/file_guard.h"

#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "startplan/parser.h"

namespace {

using ReplaceData = std::map<std::string, std::string>;

// The replacement step by step, in the path itself. It never ends once a step changes nothing.
bool PlainReplacementEnds(std::string path, const ReplaceData& data)
{
    std::size_t at = data.empty() ? std::string::npos : path.find("${");
    while (at != std::string::npos) {
        const std::size_t end = path.find('}', at);
        if (end == std::string::npos) {
            return true;
        }
        const std::string name = path.substr(at + 2, end - at - 2);
        const auto found = data.find(name);
        const std::size_t before = at;
        if (found != data.end()) {
            path.replace(at, end + 1 - at, found->second);
            at = path.find("${", at + found->second.size());
            continue;
        }
        at = path.find("${", at + name.size());
        if (at == before) {
            return false;
        }
    }
    return true;
}

// Every path of up to seven of these characters. The library is called with each one that the guard lets
// pass: had the guard a hole, this test would not return.
TEST(FileGuardTest, EveryShortPathThatPassesTheGuardComesBackFromTheLibrary)
{
    const std::string letters = "${}a";
    const ReplaceData maps[] = {{}, {{"a", "b"}}, {{"a", "${}"}}, {{"", "x"}}, {{"a${", "y"}}, {{"${", ""}}};
    const ProcMgr::YamlParser parser;
    int refused = 0;
    for (std::size_t length = 0; length <= 7; ++length) {
        for (std::size_t code = 0; code < std::size_t{1} << (2 * length); ++code) {
            std::string path;
            for (std::size_t i = 0; i < length; ++i) {
                path += letters[code >> (2 * i) & 3U];
            }
            for (const ReplaceData& map : maps) {
                const bool passes = !tool::FindEndlessPlaceholder(path, map);
                ASSERT_EQ(PlainReplacementEnds(path, map), passes) << path;
                std::string replaced = path;
                if (passes) {
                    parser.ReplaceByMatchDataInPath(replaced, map);
                }
                refused += passes ? 0 : 1;
            }
        }
    }
    EXPECT_GT(refused, 0);
}

TEST(FileGuardTest, TellsWhereThePlaceholderStands)
{
    EXPECT_EQ(std::optional<std::size_t>(2), tool::FindEndlessPlaceholder("a/${}", {{"x", "y"}}));
    EXPECT_EQ(std::optional<std::size_t>(3), tool::FindEndlessPlaceholder("${a${}", {{"x", "y"}}));
}

TEST(FileGuardTest, WhatIsNotThereOrIsAFolderIsLeftToTheLibrary)
{
    EXPECT_FALSE(tool::RefuseFile("/nowhere/at/all").has_value());
    EXPECT_FALSE(tool::RefuseFile("/").has_value());
    EXPECT_TRUE(tool::RefuseFile("/dev/null").has_value());
}

} // namespace
