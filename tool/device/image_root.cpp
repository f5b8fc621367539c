#include "tool/device/image_root.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tool/text/failure.h"

namespace tool {

namespace {

constexpr unsigned kMostLinks = 40; // as Linux has it

// Follows one path from the image's root, one name at a time.
class Resolution {
public:
    Resolution(int root, const std::string& path) : root_(root) { Push(path); }

    // False and errno if a step fails.
    bool Run()
    {
        while (!pending_.empty()) {
            const std::string name = std::move(pending_.back());
            pending_.pop_back();
            if (!Step(name)) {
                return false;
            }
        }
        return true;
    }

    std::string Path() const
    {
        std::string path;
        for (const std::string& name : names_) {
            path += "/" + name;
        }
        return path.empty() ? "/" : path;
    }

private:
    // Puts the names of a path in front of what is still to be followed; the last one comes first out.
    void Push(const std::string& path)
    {
        for (std::size_t end = path.size();;) {
            const std::size_t slash = end == 0 ? std::string::npos : path.rfind('/', end - 1);
            const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
            pending_.push_back(path.substr(begin, end - begin));
            if (slash == std::string::npos) {
                return;
            }
            end = slash;
        }
    }

    bool Step(const std::string& name)
    {
        if (!isFolder_) {
            errno = ENOTDIR;
            return false;
        }
        if (name.empty() || name == ".") {
            return true;
        }
        if (name == "..") {
            if (!names_.empty()) {
                names_.pop_back();
            }
            return true;
        }
        return Enter(name);
    }

    bool Enter(const std::string& name)
    {
        names_.push_back(name);
        const std::string path = Path();
        struct stat status = {};
        if (fstatat(root_, path.c_str() + 1, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            return false;
        }
        if (S_ISLNK(status.st_mode)) {
            return Follow(path);
        }
        isFolder_ = S_ISDIR(status.st_mode);
        return true;
    }

    bool Follow(const std::string& link)
    {
        std::array<char, PATH_MAX> target = {};
        const ssize_t size = readlinkat(root_, link.c_str() + 1, target.data(), target.size());
        if (size < 0) {
            return false;
        }
        if (++links_ > kMostLinks) {
            errno = ELOOP;
            return false;
        }
        if (size == 0) {
            errno = ENOENT;
            return false;
        }
        names_.pop_back();
        if (target[0] == '/') {
            names_.clear();
        }
        Push(std::string(target.data(), static_cast<std::size_t>(size)));
        return true;
    }

    int root_;
    std::vector<std::string> pending_;
    std::vector<std::string> names_;
    bool isFolder_ = true;
    unsigned links_ = 0;
};

// For the calls that take a path below a folder's descriptor.
const char* BelowRoot(const std::string& resolved)
{
    return resolved.size() == 1 ? "." : resolved.c_str() + 1;
}

} // namespace

ImageRoot::ImageRoot(const std::string& folder)
    : descriptor_(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC))
{
    if (descriptor_ < 0) {
        throw Failure(fmt::format("--root {}: {}", folder, std::strerror(errno)));
    }
}

ImageRoot::~ImageRoot()
{
    close(descriptor_);
}

std::optional<std::string> ImageRoot::Resolve(const std::string& path) const
{
    if (path.empty()) {
        errno = ENOENT;
        return std::nullopt;
    }
    if (path.size() >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return std::nullopt;
    }
    Resolution resolution(descriptor_, path);
    if (!resolution.Run()) {
        return std::nullopt;
    }
    std::string resolved = resolution.Path();
    if (resolved.size() >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return std::nullopt;
    }
    return resolved;
}

int ImageRoot::Examine(const std::string& path, struct stat& status) const
{
    const auto resolved = Resolve(path);
    return resolved ? fstatat(descriptor_, BelowRoot(*resolved), &status, AT_SYMLINK_NOFOLLOW) : -1;
}

int ImageRoot::Open(const std::string& path) const
{
    const auto resolved = Resolve(path);
    return resolved ? openat(descriptor_, BelowRoot(*resolved), O_RDONLY | O_NOFOLLOW | O_CLOEXEC) : -1;
}

} // namespace tool
