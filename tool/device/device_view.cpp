#include "tool/device/device_view.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const tool::DeviceView* current = nullptr;

bool HasRoot()
{
    return current != nullptr && current->Root().has_value();
}

// The function of this name that would be called, had the command not defined one itself.
template <class Function>
Function Next(const char* name)
{
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::abort();
    }
    Function function = nullptr;
    static_assert(sizeof function == sizeof symbol);
    std::memcpy(&function, &symbol, sizeof function);
    return function;
}

} // namespace

extern "C" char* realpath(const char* path, char* resolved) noexcept
{
    static const auto next = Next<char* (*)(const char*, char*)>("realpath");
    if (!HasRoot()) {
        return next(path, resolved);
    }
    const auto found = current->Root()->Resolve(path);
    if (!found) {
        return nullptr;
    }
    if (resolved == nullptr) {
        return strdup(found->c_str());
    }
    return static_cast<char*>(std::memcpy(resolved, found->c_str(), found->size() + 1));
}

extern "C" FILE* fopen(const char* path, const char* mode)
{
    static const auto next = Next<FILE* (*)(const char*, const char*)>("fopen");
    if (!HasRoot()) {
        return next(path, mode);
    }
    const int descriptor = current->Root()->Open(path);
    return descriptor < 0 ? nullptr : fdopen(descriptor, mode);
}

extern "C" int stat(const char* path, struct stat* status) noexcept
{
    return HasRoot() ? current->Root()->Examine(path, *status) : fstatat(AT_FDCWD, path, status, 0);
}

// The library wipes the record that it gets.
extern "C" passwd* getpwnam(const char* name)
{
    static const auto next = Next<passwd* (*)(const char*)>("getpwnam");
    if (current == nullptr || !current->Users()) {
        return next(name);
    }
    static passwd account;
    const auto found = current->Users()->ids.find(name);
    if (found == current->Users()->ids.end()) {
        errno = 0; // nothing has failed
        return nullptr;
    }
    account = {};
    account.pw_uid = found->second;
    return &account;
}

extern "C" group* getgrnam(const char* name)
{
    static const auto next = Next<group* (*)(const char*)>("getgrnam");
    if (current == nullptr || !current->Groups()) {
        return next(name);
    }
    static group account;
    const auto found = current->Groups()->ids.find(name);
    if (found == current->Groups()->ids.end()) {
        errno = 0; // nothing has failed
        return nullptr;
    }
    account = {};
    account.gr_gid = found->second;
    return &account;
}

namespace tool {

DeviceView::DeviceView(const DeviceFiles& files)
{
    if (!files.root.empty()) {
        root_.emplace(files.root);
    }
    if (!files.passwd.empty()) {
        users_ = ReadUsers(files.passwd);
    } else if (root_) {
        users_ = ReadUsers(*root_);
    }
    if (!files.group.empty()) {
        groups_ = ReadGroups(files.group);
    } else if (root_) {
        groups_ = ReadGroups(*root_);
    }
    current = this;
}

DeviceView::~DeviceView()
{
    current = nullptr;
}

} // namespace tool
