// A user and group database of two accounts, the same on every machine, which allocates nothing. The
// system's own may ask a network, and keeps memory between look-ups.

#include <cstring>

#include <grp.h>
#include <pwd.h>

namespace {

bool IsKnown(const char* name)
{
    return std::strcmp(name, "root") == 0 || std::strcmp(name, "app") == 0;
}

} // namespace

extern "C" passwd* getpwnam(const char* name)
{
    static passwd account; // filled anew each time, since the library wipes what it gets
    static char text[] = "account";
    account.pw_name = text;
    account.pw_uid = name[0] == 'r' ? 0 : 1234;
    return IsKnown(name) ? &account : nullptr;
}

extern "C" group* getgrnam(const char* name)
{
    static group account;
    account.gr_gid = name[0] == 'r' ? 0 : 4321;
    return IsKnown(name) ? &account : nullptr;
}
