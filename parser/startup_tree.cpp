#include <cerrno>
#include <cstdint>
#include <map>
#include <stack>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <syslog.h>

#include "parser/entry_readers.h"
#include "startplan/application_manifest.h"
#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "startplan/result_codes.h"
#include "yaml/keep_errno.h"
#include "yaml/node_ref.h"

namespace {

using startplan::KeepErrno;

// The file that uses up the count ends the walk, so a tree may have one file less than this.
constexpr unsigned kMostFiles = 200;

bool CanBeTopLevel(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        const KeepErrno keep;
        syslog(LOG_ERR, "load cfg=%s failed. errno=%d", path.c_str(), errno);
        return false;
    }
    if (S_ISDIR(status.st_mode)) {
        const KeepErrno keep;
        syslog(LOG_ERR, "%s is a directory.", path.c_str());
        return false;
    }
    return true;
}

std::vector<std::string> PathsUnder(const ProcMgr::KvsTypeYaml& node, const char* key)
{
    const startplan::NodeRef paths = startplan::FindKey(node, key);
    return paths.IsPresent() ? startplan::SequenceStrings(paths) : std::vector<std::string>();
}

} // namespace

namespace ProcMgr {

std::uint32_t YamlParser::ParseToApplication(const std::string& path, std::vector<ApplicationManifest>& apps,
                                             const std::map<std::string, std::string>& replaceData) const
{
    if (!CanBeTopLevel(path)) {
        return PARSE_ERR_CFG_PATH;
    }

    std::uint32_t result = 0;
    std::vector<std::string> startupPaths;
    std::stack<std::string> pending;
    pending.push(path);
    for (unsigned remaining = kMostFiles; !pending.empty();) {
        const std::string current = std::move(pending.top());
        pending.pop();
        KvsTypeYaml node;
        if (node.InitYamlNode(current)) {
            AddToStartupPathList(node, startupPaths);
            AddToSubStatupFileQueue(node, pending);
        } else if (errno == EACCES) {
            const KeepErrno keep;
            syslog(LOG_ERR, "InitYamlNode %s failed, errno=%d", current.c_str(), errno);
            result = PARSE_ERR_NO_PERMISSION;
        }
        if (--remaining == 0) {
            const KeepErrno keep;
            syslog(LOG_ERR, "Load more than %u sub startup files!", kMostFiles);
            return PARSE_ERR_TOO_MANY_SUB_STARTUP;
        }
    }
    if (startupPaths.empty()) {
        const KeepErrno keep;
        syslog(LOG_ERR, "No startup file to load!");
        return PARSE_ERR_NO_STARTUP_FILE;
    }

    for (std::string& startupPath : startupPaths) {
        ReplaceByMatchDataInPath(startupPath, replaceData);
        if (!CreateApplicationByStartupFile(startupPath, apps) && errno == EACCES) {
            result = PARSE_ERR_NO_PERMISSION;
        }
    }
    return result;
}

void YamlParser::AddToStartupPathList(const KvsTypeYaml& node, std::vector<std::string>& list) const
{
    for (std::string& path : PathsUnder(node, "startup_path_list")) {
        list.push_back(std::move(path));
    }
}

void YamlParser::AddToSubStatupFileQueue(const KvsTypeYaml& node, std::stack<std::string>& stack) const
{
    std::vector<std::string> paths = PathsUnder(node, "sub_startup");
    for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
        stack.push(std::move(*path));
    }
}

} // namespace ProcMgr
