#include "tool/patterns/common_name.h"

#include <cstddef>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/parse_and_depend.h"
#include "tests/support/short_texts.h"
#include "tool/library/log_collector.h"
#include "tool/patterns/name_pattern.h"

namespace {

using test_support::EveryText;
using tool::CommonName;
using tool::PatternAutomaton;

constexpr std::size_t kSteps = 1'000'000;

std::optional<std::string> Find(const std::string& a, const std::string& b)
{
    CommonName search(kSteps);
    return search.Find(PatternAutomaton(tool::PiecesOf(a)), PatternAutomaton(tool::PiecesOf(b)));
}

// Whether the library matches each pattern against each name of a small world.
class Matches {
public:
    Matches(std::vector<std::string> patterns, std::vector<std::string> names)
        : patterns_(std::move(patterns)), names_(std::move(names))
    {
        const tool::LogCollector unheard;
        for (const std::string& pattern : patterns_) {
            automata_.emplace_back(tool::PiecesOf(pattern));
            rows_.emplace_back();
            for (const std::string& name : names_) {
                rows_.back().push_back(library_.IsDynamicParaMatch(pattern, name));
            }
        }
    }

    // The names come shortest first, so the first common one is a shortest one.
    void ExpectAgreement(std::size_t a, std::size_t b) const
    {
        std::size_t first = 0;
        while (first < names_.size() && !(rows_[a][first] && rows_[b][first])) {
            ++first;
        }
        CommonName search(kSteps);
        const std::optional<std::string> found = search.Find(automata_[a], automata_[b]);
        ASSERT_FALSE(search.HasGivenUp());
        const std::string both = patterns_[a] + " and " + patterns_[b];
        if (first < names_.size()) {
            ASSERT_TRUE(found) << both << " both match " << names_[first];
            ASSERT_EQ(names_[first].size(), found->size()) << both << ": " << *found;
        }
        if (found) {
            const tool::LogCollector unheard;
            ASSERT_TRUE(library_.IsDynamicParaMatch(patterns_[a], *found)) << both << ": " << *found;
            ASSERT_TRUE(library_.IsDynamicParaMatch(patterns_[b], *found)) << both << ": " << *found;
        }
    }

    std::size_t Size() const { return patterns_.size(); }

private:
    const ParseAndDepend library_{};
    std::vector<std::string> patterns_;
    std::vector<std::string> names_;
    std::vector<PatternAutomaton> automata_;
    std::vector<std::vector<bool>> rows_;
};

// Every sequence of up to `most` of the pieces.
std::vector<std::string> Sequences(const std::vector<std::string>& pieces, std::size_t most)
{
    std::vector<std::string> all;
    std::vector<std::string> last = {""};
    for (std::size_t length = 1; length <= most; ++length) {
        std::vector<std::string> longer;
        for (const std::string& shorter : last) {
            for (const std::string& piece : pieces) {
                longer.push_back(shorter + piece);
            }
        }
        all.insert(all.end(), longer.begin(), longer.end());
        last = std::move(longer);
    }
    return all;
}

TEST(CommonNameTest, EveryPairOfShortPatternsAgreesWithTheLibrary)
{
    const Matches world(Sequences({"a", "1", ".", "<*>", "<*PATH>", "<1,10-11>"}, 3), EveryText("a1.0", 5));
    for (std::size_t a = 0; a < world.Size(); ++a) {
        for (std::size_t b = a; b < world.Size(); ++b) {
            world.ExpectAgreement(a, b);
        }
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(CommonNameTest, RandomLongerPatternsAgreeWithTheLibrary)
{
    const std::vector<std::string> pieces = {"a",  "ab",  "aab",     "b",     "1",     "11",      ".",
                                             "..", "<*>", "<*PATH>", "<1-1>", "<>",    "<10-11>", "<0,2>",
                                             "b1", "1a",  "<5-3>",   "<0-1>", "<-11>", "<2->"};
    std::mt19937 random(7);
    std::vector<std::string> patterns;
    while (patterns.size() < 400) {
        std::string pattern;
        for (std::size_t i = 1 + random() % 6; i > 0; --i) {
            pattern += pieces[random() % pieces.size()];
        }
        patterns.push_back(pattern);
    }
    const Matches world(patterns, EveryText("ab1.2", 5));
    for (std::size_t a = 0; a < world.Size(); ++a) {
        for (std::size_t b = 0; b < 40; ++b) {
            world.ExpectAgreement(a, (a + b * 7) % world.Size());
        }
        if (HasFatalFailure()) {
            return;
        }
    }
}

// Every list against every single number: the common name is that number.
TEST(CommonNameTest, NumbersOfAllLengthsAgreeWithTheLibrary)
{
    const ParseAndDepend library;
    const std::vector<std::string> numbers = {"0",      "1",         "9",          "10",        "99",
                                              "100",    "4294967",   "99999999",   "100000000", "4294967289",
                                              "429496", "429496729", "4294967295", "1999999999"};
    for (const std::string& first : numbers) {
        for (const std::string& last : numbers) {
            const std::string list = "<3," + first + "-" + last + ">";
            for (const std::string& number : numbers) {
                const tool::LogCollector unheard;
                EXPECT_EQ(library.IsDynamicParaMatch(list, number),
                          Find(list, "<" + number + ">").has_value())
                    << list << " and " << number;
            }
        }
    }
}

TEST(CommonNameTest, FindsAShortestName)
{
    EXPECT_EQ("app_2", Find("app_<1-3>", "app_<2-5>"));
    EXPECT_EQ("svc_a_x", Find("svc_<*>_x", "svc_a<*>"));
    EXPECT_EQ("app_11", Find("app_<1-30>", "app_1<1-5>"));
    EXPECT_EQ(std::nullopt, Find("app_<1-3>", "app_<4-5>"));
    EXPECT_EQ(std::nullopt, Find("map_<*PATH>", "map_<*>..<1>"));
}

TEST(CommonNameTest, FindsNoNameThatIsTooLong)
{
    const std::string most(tool::kLongestName, 'a');
    EXPECT_EQ(most, Find(most, "a<*>"));
    EXPECT_EQ(std::nullopt, Find(most.substr(1), "<*>b<*>" + std::string(1, 'c')));
}

TEST(CommonNameTest, GivesUpWhereItWouldTakeTooLong)
{
    CommonName search(100);
    const PatternAutomaton a(tool::PiecesOf(std::string(200, 'a')));

    EXPECT_EQ(std::nullopt, search.Find(a, a));

    EXPECT_TRUE(search.HasGivenUp());
}

} // namespace
