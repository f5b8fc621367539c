#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "startplan/application_manifest.h"
#include "startplan/parser.h"

namespace ProcMgr {

Parser::~Parser() = default;

std::uint32_t CfgParser::ParseToApplication(const std::string& /*path*/,
                                            std::vector<ApplicationManifest>& /*apps*/,
                                            const std::map<std::string, std::string>& /*replaceData*/) const
{
    return 0;
}

std::uint32_t CfgParser::ParseToReplaceData(const std::string& /*path*/,
                                            std::map<std::string, std::string>& /*replaceData*/) const
{
    return 0;
}

std::shared_ptr<Parser> ParseFactory::CreateParser(ParamType type)
{
    switch (type) {
    case PARAM_TYPE_YAML:
        return std::make_shared<YamlParser>();
    case PARAM_TYPE_CFG:
        return std::make_shared<CfgParser>();
    }
    return nullptr;
}

} // namespace ProcMgr
