#ifndef STARTPLAN_TESTS_SUPPORT_STARTUP_TREE_H
#define STARTPLAN_TESTS_SUPPORT_STARTUP_TREE_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/application_manifest.h"
#include "startplan/parser.h"
#include "tests/support/log_capture.h"
#include "tests/support/manifest_builder.h"
#include "tests/support/temporary_tree.h"

namespace test_support {

using Texts = std::vector<std::string>;

// A tree of configuration files with "top.yaml" on top, and what one parser makes of it.
class StartupTreeFixture : public testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& content)
    {
        return tree_.Write(name, content);
    }

    // A startup file with a complete entry of each name.
    std::string WriteApps(const std::string& name, const Texts& apps)
    {
        std::string content = apps.empty() ? "{}" : "";
        for (const std::string& app : apps) {
            content += app + ": {bin_path: /bin/" + app + "}\n";
        }
        return tree_.Write(name, content);
    }

    // The files' full paths as a YAML sequence, with the end of the line.
    std::string List(const Texts& names) const
    {
        std::string list;
        for (const std::string& name : names) {
            list += (list.empty() ? "" : ", ") + tree_.Path(name);
        }
        return "[" + list + "]\n";
    }

    std::uint32_t Parse(const std::map<std::string, std::string>& replaceData = {})
    {
        return parser_.ParseToApplication(tree_.Path("top.yaml"), apps_, replaceData);
    }

    Texts Names() const
    {
        Texts names;
        for (const ApplicationManifest& app : apps_) {
            names.push_back(app.GetAppName());
        }
        return names;
    }

    // The folder of the tree, without a slash behind it.
    std::string Root() const
    {
        const std::string file = tree_.Path("x");
        return file.substr(0, file.size() - 2);
    }

    const ProcMgr::YamlParser parser_{};
    LogCapture log_;
    TemporaryTree tree_;
    std::vector<ApplicationManifest> apps_;
};

} // namespace test_support

#endif
