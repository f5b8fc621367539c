#ifndef STARTPLAN_TOOL_DEVICE_ACCOUNT_FILE_H
#define STARTPLAN_TOOL_DEVICE_ACCOUNT_FILE_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tool {

class ImageRoot;

// The names in a file of accounts, with their numbers; the first of a name counts.
struct AccountFile {
    std::string path; // as it is shown
    bool isThere = false;
    std::map<std::string, std::uint32_t> ids;

    std::vector<std::string> Names() const;
};

// Read a file as /etc/passwd and /etc/group are written. Throw Failure if it cannot be read.
AccountFile ReadUsers(const std::string& path);
AccountFile ReadGroups(const std::string& path);
// The image's own; one that is not there knows no names.
AccountFile ReadUsers(const ImageRoot& image);
AccountFile ReadGroups(const ImageRoot& image);

} // namespace tool

#endif
