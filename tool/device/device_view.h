#ifndef STARTPLAN_TOOL_DEVICE_DEVICE_VIEW_H
#define STARTPLAN_TOOL_DEVICE_DEVICE_VIEW_H

#include <optional>
#include <string>

#include "tool/device/account_file.h"
#include "tool/device/image_root.h"

namespace tool {

// Where a device's files and accounts are taken from, instead of from this machine.
struct DeviceFiles {
    std::string root;   // --root; empty for this machine's "/"
    std::string passwd; // --passwd; empty for the root's, if there is one
    std::string group;  // --group
};

// While the object lives, the files that the library and the walk over its tree open, and the accounts that
// the library looks up, are the device's. The command defines realpath(), fopen() and stat(), getpwnam() and
// getgrnam() itself; without such an object they do what the C library's do. One object at a time.
class DeviceView {
public:
    // Throws Failure if the root or the accounts cannot be read.
    explicit DeviceView(const DeviceFiles& files);
    DeviceView(const DeviceView&) = delete;
    DeviceView& operator=(const DeviceView&) = delete;
    ~DeviceView();

    const std::optional<ImageRoot>& Root() const { return root_; }
    // Absent where this machine's are asked.
    const std::optional<AccountFile>& Users() const { return users_; }
    const std::optional<AccountFile>& Groups() const { return groups_; }

private:
    std::optional<ImageRoot> root_;
    std::optional<AccountFile> users_;
    std::optional<AccountFile> groups_;
};

} // namespace tool

#endif
