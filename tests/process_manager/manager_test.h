#ifndef STARTPLAN_TESTS_PROCESS_MANAGER_MANAGER_TEST_H
#define STARTPLAN_TESTS_PROCESS_MANAGER_MANAGER_TEST_H

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/types.h>

#include "tests/support/temporary_tree.h"

namespace process_manager_test {

using Texts = std::vector<std::string>;

// Runs the process manager on a configuration of its own. What the programs do is read from the trace that
// they write (traced_program.cpp), never from the manager's log.
class ManagerTest : public testing::Test {
protected:
    ManagerTest();
    ~ManagerTest() override;

    // Adds an entry that runs traced_program as the test's own user. `keys` are further lines of the entry,
    // with "; " between them.
    void Add(const std::string& name, const Texts& depends = {}, const Texts& actions = {},
             const std::string& keys = "");
    // Adds an entry as it is written.
    void AddText(const std::string& entry);

    // Runs the manager with arguments behind the path of the top-level file.
    void Run(const Texts& arguments);
    // Writes a line to the manager's standard input once everything has started.
    void Request(const std::string& line) const;
    void CloseStandardInput();

    // Wait until it is so, and fail the test after four minutes, which a busy machine may need.
    void WaitForTrace(const std::string& line, int count = 1) const;
    void WaitForLog(const std::string& text, int count = 1) const;

    void Signal(int number) const;
    // The manager's exit status once it has ended, within the same time.
    int ExitStatus();
    // SIGTERM, and the exit status.
    int End();
    // The same once everything has started: what the programs trace comes a little earlier.
    int EndOnceStarted();

    Texts Trace() const;
    std::string Log() const;
    int Count(const std::string& line) const; // in the trace; "start NAME" without the process number
    // Where the line stands in the trace; fails the test where it does not.
    int Position(const std::string& line) const;
    void ExpectOrder(const std::string& first, const std::string& second) const;
    // The number of the last process that was started under this name.
    pid_t ProcessOf(const std::string& name) const;
    // The manager's children by process number, with the letter of their state.
    std::map<pid_t, char> Children() const;
    pid_t Manager() const { return manager_; }

    const test_support::TemporaryTree tree_;

private:
    std::string startup_;
    pid_t manager_ = -1;
    int requests_ = -1; // the manager's standard input
};

bool IsAlive(pid_t process);

} // namespace process_manager_test

#endif
