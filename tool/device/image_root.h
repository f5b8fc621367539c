#ifndef STARTPLAN_TOOL_DEVICE_IMAGE_ROOT_H
#define STARTPLAN_TOOL_DEVICE_IMAGE_ROOT_H

#include <optional>
#include <string>

#include <sys/types.h>

struct stat;

namespace tool {

// A folder that holds a device's file system. Paths in it mean what they mean on the device: "/" is the
// folder, a relative path begins there, and a symbolic link or ".." never leads out of it.
class ImageRoot {
public:
    // Throws Failure if it is no folder that can be opened.
    explicit ImageRoot(const std::string& folder);
    ImageRoot(const ImageRoot&) = delete;
    ImageRoot& operator=(const ImageRoot&) = delete;
    ~ImageRoot();

    // The absolute path without links, "." and "..", as realpath() gives it on the device; none and errno
    // where that fails.
    std::optional<std::string> Resolve(const std::string& path) const;

    // As stat(): 0, or -1 and errno.
    int Examine(const std::string& path, struct stat& status) const;
    // As open() for reading: a descriptor, or -1 and errno.
    int Open(const std::string& path) const;

private:
    int descriptor_ = -1;
};

} // namespace tool

#endif
