#include "tool/source/file_guard.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include "tool/source/placeholders.h"

namespace tool {

std::optional<std::string> RefuseFile(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) {
        return std::nullopt;
    }
    if (S_ISFIFO(status.st_mode)) {
        return "is a pipe, not a file: reading it could wait for ever";
    }
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) {
        return "is a device, not a file: reading it could go on for ever";
    }
    if (!S_ISREG(status.st_mode)) {
        return "is a socket, not a file";
    }
    if (static_cast<std::size_t>(status.st_size) > kMostFileBytes) {
        return fmt::format("has {} bytes; at most {} are read", status.st_size, kMostFileBytes);
    }
    return std::nullopt;
}

std::optional<std::size_t> FindEndlessPlaceholder(const std::string& path,
                                                  const std::map<std::string, std::string>& replaceData)
{
    if (replaceData.empty()) {
        return std::nullopt;
    }
    for (const Placeholder& one : PlaceholdersIn(path, replaceData)) {
        if (one.isClosed && !one.isKnown && one.name.empty()) {
            return one.begin;
        }
    }
    return std::nullopt;
}

} // namespace tool
