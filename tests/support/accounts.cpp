#include "tests/support/accounts.h"

#include <cerrno>
#include <stdexcept>

#include "tests/support/next_function.h"

namespace {

test_support::Accounts* staged = nullptr;

} // namespace

extern "C" passwd* getpwnam(const char* name)
{
    static const auto next = test_support::NextFunction<passwd* (*)(const char*)>("getpwnam");
    return staged != nullptr ? staged->FindUser(name) : next(name);
}

extern "C" group* getgrnam(const char* name)
{
    static const auto next = test_support::NextFunction<group* (*)(const char*)>("getgrnam");
    return staged != nullptr ? staged->FindGroup(name) : next(name);
}

namespace test_support {

Accounts::Accounts()
{
    if (staged != nullptr) {
        throw std::logic_error("accounts are staged already");
    }
    staged = this;
}

Accounts::~Accounts()
{
    staged = nullptr;
}

passwd& Accounts::AddUser(const std::string& name, uid_t uid)
{
    userName_ = name;
    user_.pw_name = userName_.data();
    for (char** text : {&user_.pw_passwd, &user_.pw_gecos, &user_.pw_dir, &user_.pw_shell}) {
        *text = otherText_.data();
    }
    user_.pw_uid = uid;
    user_.pw_gid = uid + 1; // never what the library may take for the group
    return user_;
}

group& Accounts::AddGroup(const std::string& name, gid_t gid)
{
    groupName_ = name;
    group_.gr_name = groupName_.data();
    group_.gr_passwd = otherText_.data();
    group_.gr_gid = gid;
    return group_;
}

passwd* Accounts::FindUser(const char* name)
{
    lookups_.push_back("user " + std::string(name));
    if (!userName_.empty() && userName_ == name) {
        return &user_;
    }
    errno = errnoWhenUnknown_;
    return nullptr;
}

group* Accounts::FindGroup(const char* name)
{
    lookups_.push_back("group " + std::string(name));
    if (!groupName_.empty() && groupName_ == name) {
        return &group_;
    }
    errno = errnoWhenUnknown_;
    return nullptr;
}

} // namespace test_support
