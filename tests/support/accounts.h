#ifndef STARTPLAN_TESTS_SUPPORT_ACCOUNTS_H
#define STARTPLAN_TESTS_SUPPORT_ACCOUNTS_H

#include <string>
#include <vector>

#include <grp.h>
#include <pwd.h>

namespace test_support {

// The user and group database while the object lives: it knows the accounts added here and no others. A
// program that links this file defines getpwnam() and getgrnam() itself; without such an object they ask
// the system's database. One object at a time.
class Accounts {
public:
    Accounts();
    Accounts(const Accounts&) = delete;
    Accounts& operator=(const Accounts&) = delete;
    ~Accounts();

    // One user and one group at most; the record that a look-up will hand out.
    passwd& AddUser(const std::string& name, uid_t uid);
    group& AddGroup(const std::string& name, gid_t gid);

    // errno after each look-up that finds nothing; 0, the usual value, at first.
    void LeaveErrno(int value) { errnoWhenUnknown_ = value; }

    // The look-ups so far, as "user NAME" and "group NAME".
    const std::vector<std::string>& Lookups() const { return lookups_; }

    passwd* FindUser(const char* name);
    group* FindGroup(const char* name);

private:
    std::string userName_;
    std::string groupName_;
    std::string otherText_ = "x";
    passwd user_ = {};
    group group_ = {};
    int errnoWhenUnknown_ = 0;
    std::vector<std::string> lookups_;
};

} // namespace test_support

#endif
