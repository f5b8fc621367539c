// Every allocation of a whole parse fails once.

#include <cstdint>
#include <cstdio>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <yaml.h>

#include "startplan/kvs_type_yaml.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"
#include "tests/faults/every_key_tree.h"
#include "tests/faults/failing_allocation.h"
#include "tests/faults/quiet_syslog.h"

namespace {

using faults::Allocator;
using faults::FailingAllocation;
using Texts = std::vector<std::string>;

// Leaves of a file what a load by libyaml alone leaves when one of its allocations fails. libyaml 0.2.5
// forgets the room for a collection's items when the node itself finds no room.
std::int64_t LeftByLibyaml(const std::string& path, std::uint64_t number, bool& hasFailed)
{
    const std::int64_t before = faults::LiveAllocations();
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    yaml_parser_t parser;
    yaml_document_t document;
    {
        const FailingAllocation fault(number);
        if (yaml_parser_initialize(&parser) != 0) {
            yaml_parser_set_input_file(&parser, file);
            if (yaml_parser_load(&parser, &document) != 0) {
                yaml_document_delete(&document);
            }
        }
        hasFailed = fault.Failed() != Allocator::NONE;
    }
    yaml_parser_delete(&parser);
    std::fclose(file);
    return faults::LiveAllocations() - before;
}

// One whole parse, and what it leaves.
struct Parse {
    void Run(const std::string& replaceDataPath, const std::string& top)
    {
        replaceResult = front.ParseToReplaceData(PARAM_TYPE_YAML, replaceDataPath, replaceData);
        result = front.ParseYaml(PARAM_TYPE_YAML, top, apps, replaceData);
    }

    ParseAndDepend front;
    std::map<std::string, std::string> replaceData;
    std::vector<ApplicationManifest> apps;
    std::uint32_t replaceResult = 0;
    std::uint32_t result = 0;
};

class ParseAllocationTest : public testing::Test {
protected:
    ParseAllocationTest() : replaceDataPath_(tree_.ReplaceData()), top_(tree_.Top())
    {
        Parse parse; // fills what the C and C++ libraries allocate once, too
        parse.Run(replaceDataPath_, top_);
        expected_ = faults::TextsOf(parse.apps);
        table_ = parse.front.GetApplicationDependsMap();
    }

    void ExpectAFaultlessParse()
    {
        Parse parse;
        parse.Run(replaceDataPath_, top_);
        EXPECT_EQ(0U, parse.replaceResult);
        EXPECT_EQ(0U, parse.result);
        EXPECT_EQ(expected_, faults::TextsOf(parse.apps));
        EXPECT_EQ(table_, parse.front.GetApplicationDependsMap());
    }

    // Gives which allocator failed.
    Allocator ParseWithFault(std::uint64_t number, bool& threw)
    {
        Parse parse;
        Allocator failed = Allocator::NONE;
        threw = false;
        {
            const FailingAllocation fault(number);
            try {
                parse.Run(replaceDataPath_, top_);
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            failed = fault.Failed();
        }
        EXPECT_TRUE(faults::IsPartOf(faults::TextsOf(parse.apps), expected_));
        for (const auto& [name, depends] : parse.front.GetApplicationDependsMap()) {
            EXPECT_EQ(1U, table_.count(name)) << name;
        }
        return failed;
    }

    // Over all allocations and all files.
    std::int64_t LeftByLibyamlAlone() const
    {
        std::int64_t left = 0;
        for (const char* name : {"replace", "top", "sub", "first", "second", "third"}) {
            const std::string path = tree_.Path(std::string(name) + ".yaml");
            bool hasFailed = true;
            for (std::uint64_t number = 1; hasFailed; ++number) {
                left += LeftByLibyaml(path, number, hasFailed);
            }
        }
        return left;
    }

    const faults::EveryKeyTree tree_;
    const std::string replaceDataPath_;
    const std::string top_;
    Texts expected_;
    ParseAndDepend::DependsMap table_;
};

TEST_F(ParseAllocationTest, TheTreeIsReadWholeWithoutFaults)
{
    EXPECT_EQ(4U, expected_.size());
    EXPECT_EQ(4U, table_.size());
    ExpectAFaultlessParse();
}

TEST_F(ParseAllocationTest, EachFailsOnceAndNothingIsLostOrHalfWritten)
{
    std::uint64_t number = 1;
    std::uint64_t thrown = 0;
    std::int64_t left = 0;
    for (;; ++number) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        bool threw = false;
        const std::int64_t before = faults::LiveAllocations();
        const Allocator failed = ParseWithFault(number, threw);
        const std::int64_t after = faults::LiveAllocations();
        if (failed == Allocator::MALLOC) {
            left += after - before;
        } else {
            ASSERT_EQ(before, after);
        }
        if (failed == Allocator::NONE) {
            break;
        }
        // The standard library's failures come out as exceptions. libyaml and the C library report theirs,
        // and the file that they were working on is skipped.
        ASSERT_EQ(failed == Allocator::OPERATOR_NEW, threw);
        thrown += threw ? 1 : 0;
        if (number % 16 == 0) {
            ExpectAFaultlessParse();
        }
    }
    ExpectAFaultlessParse();
    std::cout << number - 1 << " allocations failed, " << thrown << " of them in operator new\n";
    EXPECT_EQ(LeftByLibyamlAlone(), left);
    EXPECT_GT(thrown, 100U);
    EXPECT_GT(number - 1 - thrown, 1000U);
}

// The public readers of a handle, which a parse does not use.
struct HandleReading {
    const char* name;
    bool (*read)(const ProcMgr::KvsTypeYaml&);
};
// Made before allocations fail: libc++ 14 loses the memory of a vector whose first items cannot be made.
const Texts kArguments{"--an-argument-that-is-not-short", "-b", "", "c"};

const HandleReading kReadings[] = {
    {"GetSubKvs",
     [](const ProcMgr::KvsTypeYaml& entry) {
         ProcMgr::KvsTypeYaml sub;
         return entry.GetSubKvs("startup_entry_path", sub) && sub.GetKey() == "startup_entry_path" &&
                sub.GetString() == "/opt/a/path/that/is/not/short/entry";
     }},
    {"GetInt",
     [](const ProcMgr::KvsTypeYaml& entry) {
         ProcMgr::KvsTypeYaml sub;
         return entry.GetSubKvs("device_id", sub) && sub.GetInt() == 42 && sub.GetUint64() == 42;
     }},
    {"GetArray",
     [](const ProcMgr::KvsTypeYaml& entry) {
         std::vector<ProcMgr::KvsTypeYaml> pairs;
         return entry.GetArray(pairs) && pairs.size() == 36 && pairs.back().GetKey() == "process_type";
     }},
    {"GetSequenceString",
     [](const ProcMgr::KvsTypeYaml& entry) {
         ProcMgr::KvsTypeYaml sub;
         return entry.GetSubKvs("arguments", sub) && sub.GetSequenceString() == kArguments;
     }},
    {"GetSequenceUint32",
     [](const ProcMgr::KvsTypeYaml& entry) {
         ProcMgr::KvsTypeYaml sub;
         return entry.GetSubKvs("core_affinity", sub) &&
                sub.GetSequenceUint32() == std::vector<std::uint32_t>{1, 2, 3};
     }},
    {"GetSequenceYamlNode",
     [](const ProcMgr::KvsTypeYaml& entry) {
         ProcMgr::KvsTypeYaml sub;
         return entry.GetSubKvs("arguments", sub) && sub.GetSequenceYamlNode().size() == 4;
     }},
};

TEST_F(ParseAllocationTest, EachReaderOfAHandleReadsAllOrThrows)
{
    ProcMgr::KvsTypeYaml root;
    std::vector<ProcMgr::KvsTypeYaml> entries;
    ASSERT_TRUE(root.InitYamlNode(tree_.Path("first.yaml")) && root.GetArray(entries));
    for (const HandleReading& reading : kReadings) {
        bool hasFailed = true;
        std::uint64_t number = 1;
        for (; hasFailed; ++number) {
            SCOPED_TRACE(std::string(reading.name) + ", allocation " + std::to_string(number));
            const std::int64_t before = faults::LiveAllocations();
            bool threw = false;
            bool isRight = false;
            {
                const FailingAllocation fault(number);
                try {
                    isRight = reading.read(entries.front());
                } catch (const std::bad_alloc&) {
                    threw = true;
                }
                hasFailed = fault.Failed() != Allocator::NONE;
            }
            ASSERT_EQ(before, faults::LiveAllocations());
            ASSERT_EQ(hasFailed, threw);
            ASSERT_EQ(!hasFailed, isRight);
        }
        EXPECT_GT(number, 2U) << reading.name << " allocates nothing";
    }
}

} // namespace

// What libyaml leaves is counted exactly above; a leak check at the program's end would see it again.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:yaml_parser_load\n";
}
