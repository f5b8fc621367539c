#!/bin/sh
# Holds that a page has a section and an example for each command of the help.
#
#     every_command.sh STARTPLAN PAGE
set -u

commands=$("$1" --help | sed -n 's/^  \([a-z]\{2,\}\)  *[A-Z].*/\1/p')
failed=0
for command in $commands; do
    grep -q "^## $command\$" "$2" || { echo "no section on $command"; failed=1; }
    grep -q "^\\$ startplan $command\\>" "$2" || { echo "no example of $command"; failed=1; }
done
[ -n "$commands" ] && [ $failed -eq 0 ]
