#include "tool/patterns/overlap_search.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/parse_and_depend.h"
#include "tests/support/random_seed.h"
#include "tests/support/short_texts.h"
#include "tool/library/log_collector.h"

namespace {

using test_support::EveryText;
using test_support::Random;
using tool::OverlapSearch;
using tool::TableKey;
using tool::TableKeys;

constexpr std::size_t kSteps = 1'000'000;

tool::Configuration WithKeys(const std::vector<std::string>& names)
{
    tool::Configuration configuration;
    ParseAndDepend::DependsMap table;
    for (const std::string& name : names) {
        table[name];
    }
    configuration.library.SetApplicationDependsMap(table);
    return configuration;
}

// A list of numbers alone behind some text: of those with the same text not every pair is found.
bool IsNumberOnly(const std::string& name)
{
    const std::vector<tool::PatternPiece> pieces = tool::PiecesOf(name);
    return !pieces.empty() && pieces.back().IsNumber() && pieces.size() <= 2 &&
           (pieces.size() == 1 || pieces.front().IsText());
}

// The pairs that have a common name of up to five characters, by the library; without those where a plain
// name stands in front of a pattern, which are another check's.
std::set<std::pair<std::string, std::string>> PlainOverlaps(const std::vector<TableKey>& keys)
{
    static const std::vector<std::string> kNames = EveryText("a1_", 5);
    const ParseAndDepend library;
    const tool::LogCollector unheard;
    std::set<std::pair<std::string, std::string>> pairs;
    for (std::size_t a = 0; a < keys.size(); ++a) {
        for (std::size_t b = a + 1; b < keys.size(); ++b) {
            if (!keys[a].isPattern) {
                continue;
            }
            if (std::any_of(kNames.begin(), kNames.end(), [&](const std::string& name) {
                    return library.IsDynamicParaMatch(*keys[a].name, name) &&
                           library.IsDynamicParaMatch(*keys[b].name, name);
                })) {
                pairs.emplace(*keys[a].name, *keys[b].name);
            }
        }
    }
    return pairs;
}

void ExpectAgreement(const std::vector<std::string>& names)
{
    const tool::Configuration configuration = WithKeys(names);
    const std::vector<TableKey> keys = TableKeys(configuration);
    OverlapSearch search(keys, kSteps);
    std::set<std::pair<std::string, std::string>> found;
    std::set<std::string> inPairs;
    for (const OverlapSearch::Overlap& overlap : search.Run()) {
        found.emplace(*keys[overlap.pattern].name, *keys[overlap.other].name);
        inPairs.insert({*keys[overlap.pattern].name, *keys[overlap.other].name});
        EXPECT_TRUE(configuration.library.IsDynamicParaMatch(*keys[overlap.pattern].name, overlap.name));
        EXPECT_TRUE(configuration.library.IsDynamicParaMatch(*keys[overlap.other].name, overlap.name));
    }
    EXPECT_FALSE(search.StoppedAt());
    for (const auto& [pattern, other] : PlainOverlaps(keys)) {
        const bool isFound = found.count({pattern, other}) != 0;
        if (IsNumberOnly(pattern) && IsNumberOnly(other)) {
            EXPECT_TRUE(inPairs.count(pattern) != 0 && inPairs.count(other) != 0) << pattern << " " << other;
        } else {
            EXPECT_TRUE(isFound) << pattern << " and " << other;
        }
    }
}

TEST(OverlapSearchTest, RandomTablesAgreeWithTheLibrary)
{
    const std::vector<std::string> pieces = {"a",     "a_",  "1",       "<1>", "<11-20>",
                                             "<0-2>", "<*>", "<*PATH>", "_"};
    Random random;
    for (int run = 0; run < 300 && !testing::Test::HasFailure(); ++run) {
        std::vector<std::string> names;
        for (std::size_t i = 2 + random.Below(6); i > 0; --i) {
            std::string name;
            for (std::size_t j = 1 + random.Below(4); j > 0; --j) {
                name += pieces[random.Below(pieces.size())];
            }
            names.push_back(name);
        }
        SCOPED_TRACE(testing::PrintToString(names));
        ExpectAgreement(names);
    }
}

TEST(OverlapSearchTest, ManyListsOfNumbersAreComparedQuickly)
{
    std::vector<std::string> names;
    for (int i = 0; i < 10'000; ++i) {
        names.push_back("app_<" + std::to_string(2 * i) + "-" + std::to_string(2 * i + 1) + ">");
    }
    names.emplace_back("app_<100>");
    const tool::Configuration configuration = WithKeys(names);
    const std::vector<TableKey> keys = TableKeys(configuration);
    OverlapSearch search(keys, 0); // no pair needs a walk through two patterns

    const std::vector<OverlapSearch::Overlap> overlaps = search.Run();

    ASSERT_EQ(1U, overlaps.size());
    EXPECT_EQ("app_100", overlaps[0].name);
    EXPECT_FALSE(search.StoppedAt());
}

TEST(OverlapSearchTest, SaysWhereItStopped)
{
    const tool::Configuration configuration = WithKeys({"a<*>b<1>", "a<*>c<1>", "a<*>d<1>"});
    const std::vector<TableKey> keys = TableKeys(configuration);
    OverlapSearch search(keys, 5);

    EXPECT_TRUE(search.Run().empty());

    EXPECT_EQ(0U, search.StoppedAt());
}

} // namespace
