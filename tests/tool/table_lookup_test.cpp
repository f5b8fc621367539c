#include "tool/library/table_lookup.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/random_seed.h"
#include "tool/library/log_collector.h"

namespace {

using Table = ParseAndDepend::DependsMap;

ParseAndDepend WithTable(const Table& table)
{
    ParseAndDepend library;
    library.SetApplicationDependsMap(table);
    return library;
}

void ExpectAgreement(const ParseAndDepend& library, const std::vector<std::string>& names)
{
    const auto entries = tool::EntriesServing(library, names);

    ASSERT_EQ(entries.size(), names.size());
    const tool::LogCollector unheard;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto found = library.GetAppFromDependsMap(names[i]);
        const bool isFound = found != library.GetApplicationDependsMap().end();
        EXPECT_EQ(entries[i], isFound ? &*found : nullptr) << names[i];
    }
}

TEST(TableLookupTest, FindsWhatALookUpOfItsOwnFinds)
{
    const ParseAndDepend library = WithTable(
        {{"svc", {"net"}}, {"svc_a", {}}, {"app_<1-3>", {}}, {"<*>", {}}, {"net", {"net"}}, {"0", {}}});

    ExpectAgreement(library, {"svc_a", "svc", "svc_a_b", "app_2", "app_9", "", "net", "0", "svc", "net"});
}

TEST(TableLookupTest, RandomTablesAgreeWithTheLibrary)
{
    test_support::Random random;
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        Table table;
        std::vector<std::string> names;
        for (int i = 0; i < 12; ++i) {
            table[random.Text("ab<*>", 6)] = {random.Text("ab", 2)};
            names.push_back(random.Text("ab<*>01", 5));
        }
        ExpectAgreement(WithTable(table), names);
    }
}

} // namespace
