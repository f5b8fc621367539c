// Brackets inside brackets, NESTING_DEPTH of them. A program of its own: libyaml takes time in proportion to the
// square of their number, about 20 s for a hundred thousand.

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_tree.h"
#include "tests/support/yaml_lines.h"

using ProcMgr::KvsTypeYaml;
using test_support::Lines;

namespace {

TEST(DeepNestingTest, ManyBracketsAreEitherReadOrRefused)
{
    const std::size_t depth = NESTING_DEPTH;
    const test_support::TemporaryTree tree;
    const std::string path = tree.Write("deep.yaml", std::string(depth, '[') + std::string(depth, ']'));
    test_support::LogCapture log;
    KvsTypeYaml handle;

    if (!handle.InitYamlNode(path)) { // later libyaml versions limit the depth
        EXPECT_EQ(log.Take(), Lines({test_support::NotYaml(path)}));
        return;
    }

    for (std::size_t level = 1; level < depth; ++level) {
        ASSERT_EQ(handle.GetSequenceString().size(), 1U);
        handle = KvsTypeYaml(handle.GetSequenceYamlNode()[0]);
    }
    EXPECT_TRUE(handle.GetSequenceYamlNode().empty());
    EXPECT_EQ(log.Take(), Lines());
}

} // namespace
