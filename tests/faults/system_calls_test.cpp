// Every system call of a parse fails once, with each errno that its manual or the library gives a meaning.

#include <cerrno>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "tests/faults/every_key_tree.h"
#include "tests/faults/quiet_syslog.h"
#include "tests/faults/system_calls.h"

namespace {

using faults::FailingSystemCall;
using faults::SystemCall;
using Texts = std::vector<std::string>;

constexpr std::uint32_t kAsUsual = 0;
constexpr int kFileErrors[] = {EACCES, ENOENT, ENOTDIR, ELOOP, ENAMETOOLONG, ENOMEM,
                               EMFILE, ENFILE, EIO,     EINTR, EPERM};
constexpr int kReadErrors[] = {EIO, EISDIR, EINTR, ENOMEM, EAGAIN};
constexpr int kAccountErrors[] = {0, ENOENT, EIO, EINTR, EMFILE, ENFILE, ENOMEM, ERANGE};

class SystemCallsTest : public testing::Test {
protected:
    SystemCallsTest()
    {
        std::map<std::string, std::string> data;
        EXPECT_EQ(0U, parser_.ParseToReplaceData(tree_.ReplaceData(), data));
        replaceData_ = data;
        EXPECT_EQ(0U, Parse());
        expected_ = faults::TextsOf(apps_);
    }

    std::uint32_t Parse()
    {
        apps_.clear();
        errno = 0;
        const std::uint32_t result = parser_.ParseToApplication(tree_.Top(), apps_, replaceData_);
        EXPECT_EQ(0, faults::OpenFiles());
        return result;
    }

    // The records of a faultless parse without those of one startup file.
    Texts Without(const std::string& file) const
    {
        Texts others;
        for (const std::string& text : expected_) {
            if (text.find("cfgPath: \"" + tree_.Path(file)) == std::string::npos) {
                others.push_back(text);
            }
        }
        return others;
    }

    // What a parse is to leave when the file that is opened at this place cannot be.
    Texts ExpectedWithout(std::uint64_t place) const
    {
        switch (place) {
        case 1: // top.yaml
            return {};
        case 2: // sub.yaml names third.yaml
            return Without("third.yaml");
        case 3:
            return Without("first.yaml");
        case 4:
            return Without("second.yaml");
        default:
            return Without("third.yaml");
        }
    }

    static std::uint32_t ResultOf(std::uint64_t place, bool isDenied)
    {
        if (place == 1) {
            return PARSE_ERR_NO_STARTUP_FILE; // wins over a denial
        }
        return isDenied ? PARSE_ERR_NO_PERMISSION : kAsUsual;
    }

    // In five places, and nowhere else, the call happens.
    void ExpectOneFileLess(SystemCall call, int error, std::size_t readable = 0)
    {
        for (std::uint64_t place = 1; place <= 6; ++place) {
            SCOPED_TRACE("file " + std::to_string(place) + ", errno " + std::to_string(error));
            std::uint32_t result = 0;
            bool hasFailed = false;
            {
                const FailingSystemCall fault(call, place, error, readable);
                result = Parse();
                hasFailed = fault.HasFailed();
            }
            EXPECT_EQ(place <= 5, hasFailed);
            EXPECT_EQ(place <= 5 ? ResultOf(place, error == EACCES) : kAsUsual, result);
            EXPECT_EQ(place <= 5 ? ExpectedWithout(place) : expected_, faults::TextsOf(apps_));

            EXPECT_EQ(kAsUsual, Parse());
            EXPECT_EQ(expected_, faults::TextsOf(apps_));
        }
    }

    const faults::EveryKeyTree tree_;
    const ProcMgr::YamlParser parser_{};
    std::map<std::string, std::string> replaceData_;
    std::vector<ApplicationManifest> apps_;
    Texts expected_;
};

TEST_F(SystemCallsTest, AllFourRecordsAreReadWithoutFaults)
{
    EXPECT_EQ(4U, expected_.size());
    EXPECT_EQ(2U, Without("third.yaml").size());
    EXPECT_EQ(3U, Without("first.yaml").size());
}

// EACCES after each line would turn every other failure into a denial; 0 would hide a real one.
TEST_F(SystemCallsTest, AFileThatCannotBeResolvedOrOpenedIsSkippedWhateverSyslogDoesToErrno)
{
    for (const int errnoAfter : {EACCES, 0}) {
        faults::LeaveErrnoAfterSyslog(errnoAfter);
        for (const int error : kFileErrors) {
            ExpectOneFileLess(SystemCall::REALPATH, error);
            ExpectOneFileLess(SystemCall::FOPEN, error);
        }
    }
}

TEST_F(SystemCallsTest, AFileThatCannotBeReadToItsEndGivesNoRecord)
{
    for (const int error : kReadErrors) {
        for (const std::size_t readable : {0U, 1U, 20U, 30U}) {
            ExpectOneFileLess(SystemCall::READ, error, readable);
        }
    }
}

TEST_F(SystemCallsTest, AStartupFileThatCannotBeReadToItsEndGivesNoneOfItsRecords)
{
    // third.yaml holds two entries; the first one is whole in these bytes.
    const FailingSystemCall fault(SystemCall::READ, 5, EIO, 1600);

    EXPECT_EQ(kAsUsual, Parse());

    EXPECT_TRUE(fault.HasFailed());
    EXPECT_EQ(Without("third.yaml"), faults::TextsOf(apps_));
}

TEST_F(SystemCallsTest, ATopLevelFileThatCannotBeExaminedEndsTheParse)
{
    for (const int error : kFileErrors) {
        SCOPED_TRACE(error);
        {
            const FailingSystemCall fault(SystemCall::STAT, 1, error);
            EXPECT_EQ(PARSE_ERR_CFG_PATH, Parse());
            EXPECT_TRUE(fault.HasFailed());
            EXPECT_TRUE(apps_.empty());
        }
        EXPECT_EQ(kAsUsual, Parse());
        EXPECT_EQ(expected_, faults::TextsOf(apps_));
    }
}

TEST_F(SystemCallsTest, AnAccountThatCannotBeLookedUpLeavesTheDefault)
{
    for (const int error : kAccountErrors) {
        SCOPED_TRACE(error);
        {
            const FailingSystemCall fault(SystemCall::GETPWNAM, 1, error);
            EXPECT_EQ(kAsUsual, Parse());
            EXPECT_TRUE(fault.HasFailed());
            ASSERT_EQ(4U, apps_.size());
            EXPECT_EQ(1000U, apps_[1].GetUid());
            EXPECT_EQ(0U, apps_[1].GetGid());
        }
        {
            const FailingSystemCall fault(SystemCall::GETGRNAM, 1, error);
            EXPECT_EQ(kAsUsual, Parse());
            EXPECT_TRUE(fault.HasFailed());
            ASSERT_EQ(4U, apps_.size());
            EXPECT_EQ(1234U, apps_[1].GetUid());
            EXPECT_EQ(1000U, apps_[1].GetGid());
        }
        EXPECT_EQ(kAsUsual, Parse());
        EXPECT_EQ(expected_, faults::TextsOf(apps_));
    }
}

TEST_F(SystemCallsTest, ReplaceDataThatCannotBeReadIsRefused)
{
    for (const SystemCall call : {SystemCall::REALPATH, SystemCall::FOPEN, SystemCall::READ}) {
        for (const int error : kFileErrors) {
            std::map<std::string, std::string> data = {{"B", "kept"}};
            {
                const FailingSystemCall fault(call, 1, error);
                EXPECT_EQ(PARSE_ERR_NO_STARTUP_FILE, parser_.ParseToReplaceData(tree_.ReplaceData(), data));
                EXPECT_TRUE(fault.HasFailed());
            }
            EXPECT_EQ(1U, data.size());
            EXPECT_EQ(0U, parser_.ParseToReplaceData(tree_.ReplaceData(), data));
            EXPECT_EQ(2U, data.size());
            EXPECT_EQ("kept", data["B"]);
        }
    }
}

} // namespace
