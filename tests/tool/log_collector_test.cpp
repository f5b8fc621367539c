#include "tool/library/log_collector.h"

#include <cerrno>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <syslog.h>

namespace {

using Strings = std::vector<std::string>;

TEST(LogCollectorTest, KeepsFormatTextAndEachArgument)
{
    tool::LogCollector collector;

    syslog(LOG_ERR, " [%s][%s %d] %lu%% of 0x%X, %zu", "A", "a %s b", -5, 7UL, 255U, sizeof(char));

    const tool::LogLines lines = collector.Take();
    ASSERT_EQ(1U, lines.size());
    EXPECT_EQ(LOG_ERR, lines[0].priority);
    EXPECT_EQ(" [%s][%s %d] %lu%% of 0x%X, %zu", lines[0].format);
    EXPECT_EQ(" [A][a %s b -5] 7% of 0xFF, 1", lines[0].text);
    EXPECT_EQ((Strings{"A", "a %s b", "-5", "7", "FF", "1"}), lines[0].arguments);
    EXPECT_TRUE(collector.Take().empty());
}

TEST(LogCollectorTest, AnArgumentOfAnyLengthIsKeptWhole)
{
    tool::LogCollector collector;
    const std::string longText(100'000, 'x');

    syslog(LOG_WARNING, "<%s>", longText.c_str());

    const tool::LogLines lines = collector.Take();
    EXPECT_EQ("<" + longText + ">", lines.at(0).text);
    EXPECT_EQ(Strings{longText}, lines.at(0).arguments);
}

TEST(LogCollectorTest, FormatsProgressOnlyWhenAskedTo)
{
    tool::LogCollector plain;
    syslog(LOG_INFO, "read %s", "a");
    EXPECT_EQ("", plain.Take().at(0).text);

    tool::LogCollector all(true);
    syslog(LOG_INFO, "read %s", "a");
    EXPECT_EQ("read a", all.Take().at(0).text);
}

TEST(LogCollectorTest, TheInnermostOneGetsTheLines)
{
    tool::LogCollector outer;
    {
        tool::LogCollector inner;
        syslog(LOG_ERR, "one");
        EXPECT_EQ(1U, inner.Take().size());
    }
    syslog(LOG_ERR, "two");
    EXPECT_EQ("two", outer.Take().at(0).text);
}

TEST(LogCollectorTest, LeavesErrnoAlone)
{
    const tool::LogCollector collector;
    errno = EACCES;

    syslog(LOG_ERR, "%s", "text");

    EXPECT_EQ(EACCES, errno);
}

TEST(LogCollectorTest, EveryPriorityHasItsName)
{
    EXPECT_EQ("LOG_EMERG", tool::PriorityName(LOG_EMERG));
    EXPECT_EQ("LOG_WARNING", tool::PriorityName(LOG_WARNING));
    EXPECT_EQ("LOG_DEBUG", tool::PriorityName(LOG_DEBUG));
}

} // namespace
