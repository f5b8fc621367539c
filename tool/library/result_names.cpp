#include "tool/library/result_names.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "startplan/result_codes.h"

namespace tool {

namespace {

struct Result {
    std::uint32_t code;
    std::string_view name;
    std::string_view meaning;
};

constexpr std::array<Result, 8> kResults = {{
    {0, "success", "everything was read"},
    {PARSE_ERR_CFG_PATH, "PARSE_ERR_CFG_PATH", "the top-level path cannot be examined, or it is a directory"},
    {PARSE_ERR_CREATE_PARSER, "PARSE_ERR_CREATE_PARSER", "there is no such parser"},
    {PARSE_ERR_NO_PERMISSION, "PARSE_ERR_NO_PERMISSION",
     "access to a file was denied, so the device has no applications at all"},
    {PARSE_ERR_NO_STARTUP_FILE, "PARSE_ERR_NO_STARTUP_FILE", "no startup file is named anywhere in the tree"},
    {PARSE_ERR_TOO_MANY_SUB_STARTUP, "PARSE_ERR_TOO_MANY_SUB_STARTUP",
     "the tree has 200 or more files that name files, so nothing was read"},
    {PARSE_ERR_DEPEND_NOT_FOUND, "PARSE_ERR_DEPEND_NOT_FOUND",
     "an application, or a dependency of one, is not in the dependency table"},
    {PARSE_ERR_GRAPH_CYCLE, "PARSE_ERR_GRAPH_CYCLE",
     "the request has a cycle, so none of it can be handed out"},
}};

const Result* Find(std::uint32_t code)
{
    const auto* found =
        std::find_if(kResults.begin(), kResults.end(), [code](const Result& r) { return r.code == code; });
    return found == kResults.end() ? nullptr : found;
}

} // namespace

std::string_view ResultName(std::uint32_t code)
{
    const Result* result = Find(code);
    return result == nullptr ? "unknown result" : result->name;
}

std::string_view ResultMeaning(std::uint32_t code)
{
    const Result* result = Find(code);
    return result == nullptr ? "a result that this command does not know" : result->meaning;
}

std::string ResultText(std::uint32_t code)
{
    return code == 0 ? "0" : fmt::format("{} (0x{:X})", ResultName(code), code);
}

} // namespace tool
