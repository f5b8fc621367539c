#ifndef STARTPLAN_TESTS_FAULTS_QUIET_SYSLOG_H
#define STARTPLAN_TESTS_FAULTS_QUIET_SYSLOG_H

namespace faults {

// A program that links this file defines a syslog() that keeps nothing and allocates nothing, so that no
// fault meets the test's own memory.

// What errno is after each line from now on; EACCES at first, which a tree walk would take for a denied file
// if it saw it.
void LeaveErrnoAfterSyslog(int value);

unsigned long LinesLogged();

} // namespace faults

#endif
