#include "tool/source/nearest_file.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

// A folder with more names is not searched.
constexpr std::size_t kMostNames = 10'000;

// Where the path is on this machine. Links are not kept inside the root: nothing but advice comes of it.
fs::path Below(const std::string& root, const fs::path& path)
{
    return root.empty() ? path : fs::path(root + "/" + path.string());
}

std::vector<std::string> NamesIn(const std::string& root, const fs::path& folder, const fs::path& except)
{
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator at(Below(root, folder.empty() ? "." : folder), error);
    for (; !error && at != fs::directory_iterator() && names.size() < kMostNames; at.increment(error)) {
        if (folder / at->path().filename() != except) {
            names.push_back(at->path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool Exists(const std::string& root, const fs::path& path)
{
    std::error_code error;
    return fs::exists(Below(root, path), error);
}

std::string HelpForMissingFile(const std::string& root, const std::string& path, const std::string& namedBy)
{
    if (path.empty()) {
        return "write a path, or take the item out";
    }
    fs::path mended;
    fs::path missing; // the first part of the path that is not there
    for (const fs::path& name : fs::path(path)) {
        if (Exists(root, mended / name)) {
            mended /= name;
            continue;
        }
        missing = missing.empty() ? mended / name : missing;
        const std::string nearest = Nearest(name.string(), NamesIn(root, mended, namedBy));
        if (nearest.empty()) {
            return missing == fs::path(path)
                       ? "correct the path, or add the file"
                       : fmt::format("there is no \"{}\"; correct the path", Printable(missing.string()));
        }
        mended /= nearest;
    }
    return fmt::format("did you mean \"{}\"?", Printable(mended.string()));
}

std::string HelpForFolder(const std::string& root, const std::string& path)
{
    const fs::path top = fs::path(path) / "top.yaml";
    return Exists(root, top) ? fmt::format("did you mean \"{}\"?", Printable(top.string()))
                             : "name a file in it";
}

} // namespace

std::string HelpForUnreadable(const std::string& root, const std::string& path, const std::string& namedBy,
                              int error)
{
    if (error == ENOENT || error == ENOTDIR) {
        return HelpForMissingFile(root, path, namedBy);
    }
    if (error == EISDIR) {
        return namedBy.empty() ? HelpForFolder(root, path) : "name a file in it";
    }
    return error == EACCES ? "let the process manager's user read the file" : "";
}

} // namespace tool
