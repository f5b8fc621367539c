#include "tool/device/account_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <fmt/format.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tool/device/image_root.h"
#include "tool/text/failure.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void Fail(const std::string& path, const char* reason)
{
    throw Failure(fmt::format("{}: {}; the accounts cannot be read", Printable(path), reason));
}

// Takes the descriptor over.
OpenFile ToFile(int descriptor, const std::string& path)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        Fail(path, S_ISDIR(status.st_mode) ? "is a directory" : "is no file");
    }
    OpenFile file(fdopen(descriptor, "r"));
    if (file == nullptr) {
        Fail(path, std::strerror(errno));
    }
    return file;
}

// `next` gives the file's records one by one, as fgetpwent() does.
template <class Record>
AccountFile ReadAccounts(int descriptor, const std::string& path, Record* (*next)(std::FILE*),
                         char* Record::*name, std::uint32_t Record::*id)
{
    if (descriptor < 0) {
        Fail(path, std::strerror(errno));
    }
    AccountFile accounts{path, true, {}};
    const OpenFile file = ToFile(descriptor, path);
    while (const Record* record = next(file.get())) {
        accounts.ids.emplace(record->*name, record->*id);
    }
    if (std::ferror(file.get()) != 0) {
        Fail(path, std::strerror(errno));
    }
    return accounts;
}

AccountFile ReadUsersAt(int descriptor, const std::string& path)
{
    return ReadAccounts<passwd>(descriptor, path, fgetpwent, &passwd::pw_name, &passwd::pw_uid);
}

AccountFile ReadGroupsAt(int descriptor, const std::string& path)
{
    return ReadAccounts<group>(descriptor, path, fgetgrent, &group::gr_name, &group::gr_gid);
}

// A pipe must not make the command wait.
int OpenHere(const std::string& path)
{
    return open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

} // namespace

std::vector<std::string> AccountFile::Names() const
{
    std::vector<std::string> names;
    for (const auto& [name, id] : ids) {
        names.push_back(name);
    }
    return names;
}

AccountFile ReadUsers(const std::string& path)
{
    return ReadUsersAt(OpenHere(path), path);
}

AccountFile ReadGroups(const std::string& path)
{
    return ReadGroupsAt(OpenHere(path), path);
}

AccountFile ReadUsers(const ImageRoot& image)
{
    const char* path = "/etc/passwd";
    const int descriptor = image.Open(path);
    return descriptor < 0 && errno == ENOENT ? AccountFile{path, false, {}} : ReadUsersAt(descriptor, path);
}

AccountFile ReadGroups(const ImageRoot& image)
{
    const char* path = "/etc/group";
    const int descriptor = image.Open(path);
    return descriptor < 0 && errno == ENOENT ? AccountFile{path, false, {}} : ReadGroupsAt(descriptor, path);
}

} // namespace tool
