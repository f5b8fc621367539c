#!/bin/sh
# Runs the commands of a page's `console` blocks and compares what the page says with what they print.
#
#     run_console.sh STARTPLAN PAGE [--update]
#
# Such a block holds "$ COMMAND" lines, each with standard output and standard error of the command below it. A
# command may go on behind a "\" at the end of its line; "$ echo $?" shows the status of the one before. Commands
# run in a folder that has the examples/ and docs/ of the source tree. --update writes the output into the page.
set -u

here=$(cd "$(dirname "$0")" && pwd)
PATH=$(cd "$(dirname "$1")" && pwd):$PATH
page=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
update=${3:-}
LC_ALL=C
TERM=dumb
export PATH LC_ALL TERM
unset NO_COLOR COLUMNS

scratch=$(mktemp -d) || exit 2
trap 'rm -rf "$scratch"' EXIT
trap 'exit 2' HUP INT TERM
mkdir "$scratch/root"
cd "$scratch/root" || exit 2
ln -s "$here/../../examples" "$here/../../docs" . || exit 2

status=0
commands=0
in_block=no
command=
while IFS= read -r line || [ -n "$line" ]; do
    if [ "$in_block" = no ]; then
        printf '%s\n' "$line"
        [ "$line" != '```console' ] || in_block=yes
        continue
    fi
    if [ "$line" = '```' ]; then
        printf '%s\n' "$line"
        in_block=no
        continue
    fi
    # The rest of a command, the next command, or a line that an earlier run has printed.
    case $command,$line in
    *\\,*) command=${command%\\}$line ;;
    *,"$ "*) command=${line#"$ "} ;;
    *) continue ;;
    esac
    printf '%s\n' "$line"
    case $command in
    *\\) continue ;;
    esac
    (
        (exit $status)
        eval "$command"
    ) </dev/null 2>&1
    status=$?
    commands=$((commands + 1))
done <"$page" >"$scratch/page"

if [ "$update" = --update ]; then
    cp "$scratch/page" "$page"
elif ! diff -u "$page" "$scratch/page"; then
    exit 1
fi
echo "$commands commands"
[ $commands -gt 0 ]
