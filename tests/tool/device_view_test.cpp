#include "tool/device/device_view.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "startplan/parser.h"
#include "tests/support/temporary_tree.h"
#include "tool/configuration/configuration.h"
#include "tool/text/failure.h"

namespace {

using test_support::TemporaryTree;
using tool::Configuration;
using tool::DeviceView;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

class DeviceViewTest : public testing::Test {
protected:
    Configuration Load(const std::string& top)
    {
        tool::ConfigurationRequest request;
        request.top = top;
        request.device = files_;
        return tool::LoadConfiguration(request);
    }

    TemporaryTree tree_;
    tool::DeviceFiles files_;
};

TEST_F(DeviceViewTest, TheLibraryReadsTheDevicesFilesAndAccounts)
{
    tree_.Write("image/etc/vehicle/top.yaml", "startup_path_list: [/etc/vehicle/link.yaml]");
    tree_.Write("image/opt/apps.yaml", "a: {bin_path: /a, user_name: driver, group_name: dash}\n"
                                       "b: {bin_path: /b, user_name: root, group_name: root}\n");
    ASSERT_EQ(0, symlink("/opt/apps.yaml", tree_.Path("image/etc/vehicle/link.yaml").c_str()));
    tree_.Write("image/etc/passwd",
                "# a comment\nno line\nroot:x:7:8::/:/bin/sh\ndriver:x:4242:1::/:/bin/sh\n"
                "driver:x:1:1::/:/bin/sh\n");
    tree_.Write("image/etc/group", "dash:x:3000000000:driver\n");
    files_.root = tree_.Path("image");

    const Configuration configuration = Load("/etc/vehicle/top.yaml");

    ASSERT_EQ(0U, configuration.result);
    ASSERT_EQ(2U, configuration.apps.size());
    EXPECT_EQ("/etc/vehicle/link.yaml", configuration.apps[0].GetCfgPath());
    EXPECT_EQ(4242U, configuration.apps[0].GetUid());
    EXPECT_EQ(3000000000U, configuration.apps[0].GetGid());
    EXPECT_EQ(7U, configuration.apps[1].GetUid());
    EXPECT_EQ(1000U, configuration.apps[1].GetGid()); // this machine has a group "root", the device has none
}

TEST_F(DeviceViewTest, AccountFilesCountWithoutARootAndBeforeTheRootsOwn)
{
    const std::string top = tree_.Write("top.yaml", "startup_path_list: [" + tree_.Path("apps.yaml") + "]");
    tree_.Write("apps.yaml", "a: {bin_path: /a, user_name: driver, group_name: root}\n");
    files_.passwd = tree_.Write("passwd", "driver:x:4242:1::/:/bin/sh\n");

    const Configuration configuration = Load(top);

    ASSERT_EQ(1U, configuration.apps.size());
    EXPECT_EQ(4242U, configuration.apps[0].GetUid());
    EXPECT_EQ(0U, configuration.apps[0].GetGid()); // of this machine

    tree_.Write("image/etc/passwd", "driver:x:1:1::/:/bin/sh\n");
    files_.root = tree_.Path("image");
    const DeviceView view(files_);
    EXPECT_EQ(4242U, view.Users()->ids.at("driver"));
    EXPECT_FALSE(view.Groups()->isThere);
}

TEST_F(DeviceViewTest, TheCallsAreThisMachinesAgainOnceTheObjectIsGone)
{
    const std::string path = tree_.Write("image/only-there.yaml", "text");
    files_.root = tree_.Path("image");
    struct stat status = {};
    {
        const DeviceView view(files_);
        EXPECT_EQ(0, stat("/only-there.yaml", &status));
        const OpenFile file(std::fopen("/only-there.yaml", "rb"));
        EXPECT_NE(nullptr, file);
        const std::unique_ptr<char, void (*)(void*)> resolved(realpath("only-there.yaml", nullptr),
                                                              std::free);
        ASSERT_NE(nullptr, resolved);
        EXPECT_STREQ("/only-there.yaml", resolved.get());
        EXPECT_EQ(nullptr, getpwnam("root"));
        EXPECT_EQ(nullptr, getgrnam("root"));
        EXPECT_EQ(nullptr, std::fopen(path.c_str(), "rb"));
        EXPECT_EQ(ENOENT, errno);
    }
    EXPECT_NE(0, stat("/only-there.yaml", &status));
    EXPECT_EQ(nullptr, std::fopen("/only-there.yaml", "rb"));
    EXPECT_EQ(nullptr, realpath("/only-there.yaml", nullptr));
    EXPECT_NE(nullptr, getpwnam("root"));
    EXPECT_NE(nullptr, getgrnam("root"));
    EXPECT_NE(nullptr, OpenFile(std::fopen(path.c_str(), "rb")));
}

TEST_F(DeviceViewTest, AccountsThatCannotBeReadAreAFailure)
{
    for (const std::string& path : {tree_.Path("nowhere"), tree_.Path(""), std::string("/dev/null")}) {
        files_.passwd = path;
        files_.group.clear();
        EXPECT_THROW(DeviceView{files_}, tool::Failure) << path;
        files_.passwd.clear();
        files_.group = path;
        EXPECT_THROW(DeviceView{files_}, tool::Failure) << path;
    }
    EXPECT_NE(nullptr, getpwnam("root")); // nothing is left behind
}

} // namespace
