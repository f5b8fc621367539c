#include "tool/commands/configuration_diff.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/random_seed.h"
#include "tests/support/temporary_tree.h"

namespace {

using tool::Configuration;
using tool::ConfigurationDiff;
using tool::NamePair;

using Names = std::vector<std::string>;
using Table = std::map<std::string, std::set<std::string>>;

// One startup file in a folder of its own below the tree.
Configuration Load(const test_support::TemporaryTree& tree, const std::string& folder,
                   const std::string& entries)
{
    const std::string apps = tree.Write(folder + "/apps.yaml", entries);
    return tool::LoadConfiguration(
        {tree.Write(folder + "/top.yaml", "startup_path_list: [" + apps + "]\n"), "", {}});
}

std::string EntryOf(const std::string& name, const std::set<std::string>& depends)
{
    std::string text = name + ": {bin_path: /bin/" + name + ", depends: [";
    for (const std::string& one : depends) {
        text += one + ", ";
    }
    return text + "]}\n";
}

std::string Entries(const Table& table, const Names& order)
{
    std::string text;
    for (const std::string& name : order) {
        text += EntryOf(name, table.at(name));
    }
    return text;
}

Names NamesOf(const Table& table)
{
    Names names;
    for (const auto& [name, depends] : table) {
        names.push_back(name);
    }
    return names;
}

// No name begins with another one: which entry serves such a one is up to the order of a hash table.
Table RandomTable(test_support::Random& random)
{
    Table table;
    for (int i = 0; i < 12; ++i) {
        table[std::string("app_") + "abcdefghijklmnop"[random.Below(16)]];
    }
    const Names names = NamesOf(table);
    for (auto& [name, depends] : table) {
        for (const std::string& other : names) {
            if (other < name && random.OneIn(4)) {
                depends.insert(other);
            }
        }
    }
    return table;
}

void Shuffle(Names& names, test_support::Random& random)
{
    for (std::size_t i = names.size(); i > 1; --i) {
        std::swap(names[i - 1], names[random.Below(i)]);
    }
}

TEST(ConfigurationDiffTest, TheOrderOfEntriesAndTheFolderCountForNothing)
{
    const test_support::TemporaryTree tree;
    test_support::Random random;
    for (int round = 0; round < 30; ++round) {
        SCOPED_TRACE(round);
        const Table table = RandomTable(random);
        Names order = NamesOf(table);
        Shuffle(order, random);

        const ConfigurationDiff diff = tool::Compare(Load(tree, "old", Entries(table, NamesOf(table))),
                                                     Load(tree, "new", Entries(table, order)));

        EXPECT_TRUE(diff.IsSame());
    }
}

// Plain: every pair of the one that is not among the pairs of the other.
std::vector<NamePair> PlainRest(const Table& one, const Table& other)
{
    std::vector<NamePair> rest;
    for (const auto& [name, depends] : one) {
        for (const std::string& needed : depends) {
            if (other.count(name) == 0 || other.at(name).count(needed) == 0) {
                rest.emplace_back(name, needed);
            }
        }
    }
    return rest;
}

Names PlainRestOfNames(const Table& one, const Table& other)
{
    Names rest;
    for (const auto& [name, depends] : one) {
        if (other.count(name) == 0) {
            rest.push_back(name);
        }
    }
    return rest;
}

TEST(ConfigurationDiffTest, RandomTreesDifferByWhatAPlainComparisonFinds)
{
    const test_support::TemporaryTree tree;
    test_support::Random random;
    for (int round = 0; round < 50; ++round) {
        SCOPED_TRACE(round);
        const Table before = RandomTable(random);
        const Table after = RandomTable(random);

        const ConfigurationDiff diff = tool::Compare(Load(tree, "old", Entries(before, NamesOf(before))),
                                                     Load(tree, "new", Entries(after, NamesOf(after))));

        EXPECT_EQ(diff.added, PlainRestOfNames(after, before));
        EXPECT_EQ(diff.removed, PlainRestOfNames(before, after));
        EXPECT_EQ(diff.edgesAdded, PlainRest(after, before));
        EXPECT_EQ(diff.edgesRemoved, PlainRest(before, after));
        EXPECT_EQ(diff.IsSame(), before == after);
        for (const tool::AppChange& change : diff.changed) {
            EXPECT_NE(before.at(change.name), after.at(change.name)) << change.name;
            EXPECT_TRUE(change.settings.empty()) << change.name;
        }
        for (const std::string& name : diff.start.moved) {
            EXPECT_NE(diff.start.before.roundOf.at(name), diff.start.after.roundOf.at(name)) << name;
        }
    }
}

std::string EntryWith(const char* setting)
{
    return std::string("a: {bin_path: /bin/a, ") + setting + "}\n";
}

struct SettingCase {
    const char* setting;
    const char* before;
    const char* after;
};
const SettingCase kSettings[] = {
    {"uid", "uid: 5, gid: 7", "uid: 6, gid: 7"},
    {"arguments", "arguments: [a, b]", "arguments: [b, a]"},
    {"env", "env: {A: 1}", "env: {A: 2}"},
    {"heart_beat", "heart_beat: true", "heart_beat: "}, // left empty it is off
    {"restart", "", "restart: on-failure"},
    {"sharepool_groups", "sharepool_groups: {a: ro, b: rw}", "sharepool_groups: {b: rw, a: rw}"},
    {"cgroup_path", "cgroup_path: {cpu: /a}", "cgroup_path: {cpu: /b}"},
    {"core_affinity", "core_affinity: [1]", "core_affinity: [2]"},
};

TEST(ConfigurationDiffTest, ASettingThatDiffersIsNamed)
{
    const test_support::TemporaryTree tree;
    for (const SettingCase& one : kSettings) {
        SCOPED_TRACE(one.setting);

        const ConfigurationDiff diff =
            tool::Compare(Load(tree, "old", EntryWith(one.before)), Load(tree, "new", EntryWith(one.after)));

        ASSERT_EQ(diff.changed.size(), 1U);
        ASSERT_EQ(diff.changed.front().settings.size(), 1U);
        EXPECT_EQ(diff.changed.front().settings.front().name, one.setting);
        EXPECT_FALSE(diff.IsSame());
    }
}

TEST(ConfigurationDiffTest, WhatIsTheSameOnTheDeviceIsNoDifference)
{
    const test_support::TemporaryTree tree;
    const std::pair<const char*, const char*> sames[] = {
        {"", "uid: 1000"},
        {"env: {A: 1, B: 2}", "env: {B: 2, A: 1}"},
        {"sharepool_groups: {a: ro, b: rw}", "sharepool_groups: {b: rw, a: ro}"},
        {"nice: 10", "nice: 010"},
        {"is_so: yes", "is_so: false"},
        {"", "unknown_key: 1"},
    };
    for (const auto& [before, after] : sames) {
        SCOPED_TRACE(after);

        const ConfigurationDiff diff =
            tool::Compare(Load(tree, "old", EntryWith(before)), Load(tree, "new", EntryWith(after)));

        EXPECT_TRUE(diff.IsSame());
    }
}

} // namespace
