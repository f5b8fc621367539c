#include "startplan/kvs_type_yaml.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <syslog.h>
#include <yaml.h>

#include "yaml/keep_errno.h"
#include "yaml/yaml_log.h"

namespace {

using startplan::KeepErrno;
using namespace startplan::yaml_log;

constexpr std::size_t kPathBufferSize = 4096;
constexpr char kOperation[] = "InitYamlNode";

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

// libyaml's parser for the length of one load.
class LoadingParser {
public:
    explicit LoadingParser(std::FILE* file) : initialized_(yaml_parser_initialize(&parser_) != 0)
    {
        yaml_parser_set_input_file(&parser_, file);
    }
    LoadingParser(const LoadingParser&) = delete;
    LoadingParser& operator=(const LoadingParser&) = delete;
    ~LoadingParser() { yaml_parser_delete(&parser_); }

    // A parser that found no memory for its buffers must not run; for the caller that is a failed load.
    bool Load(yaml_document_t& document)
    {
        return initialized_ && yaml_parser_load(&parser_, &document) != 0;
    }

private:
    yaml_parser_t parser_;
    const bool initialized_;
};

} // namespace

namespace ProcMgr {

YamlDocument::YamlDocument()
{
    std::memset(&document, 0, sizeof(document));
}

YamlDocument::~YamlDocument()
{
    if (loaded) {
        yaml_document_delete(&document);
    }
}

bool KvsTypeYaml::InitYamlNode(const std::string& yamlPath)
{
    char resolved[kPathBufferSize] = {};
    if (realpath(yamlPath.c_str(), resolved) == nullptr) {
        const KeepErrno keep;
        syslog(LOG_INFO, " [%s][%s %d] file not found, yamlPath=%s", kTag, kOperation, kFileNotFound,
               yamlPath.c_str());
        return false;
    }
    const OpenFile file(std::fopen(resolved, "rb"));
    if (file == nullptr) {
        const KeepErrno keep;
        syslog(LOG_ERR, " [%s][%s %d] Load yaml=%s failed, open failed", kTag, kOperation, kOpenFailed,
               resolved);
        return false;
    }

    LoadingParser parser(file.get());
    document = std::make_shared<YamlDocument>();
    if (!parser.Load(document->document)) {
        const KeepErrno keep;
        syslog(LOG_ERR, " [%s][%s %d] Load yaml=%s failed, init yaml paser failed", kTag, kOperation,
               kLoadFailed, resolved);
        return false;
    }
    document->loaded = true;
    const yaml_node_t* root = yaml_document_get_root_node(&document->document);
    if (root == nullptr) {
        const KeepErrno keep;
        syslog(LOG_ERR, " [%s][%s %d] Load yaml=%s failed, root node is nullptr", kTag, kOperation,
               kNoRootNode, resolved);
        return false;
    }
    node = *root;
    return true;
}

} // namespace ProcMgr
