#!/bin/sh
# Runs the startplan command over the folders below cases/ and compares what it says.
#
#     run_cases.sh STARTPLAN [--update] [CASE...]
#
# A case is a folder with
#     args           the arguments, quoted as in a shell
#     config/        the files it works on; a path such as config/top.yaml passes the library's path check
#     run            instead of args: a shell script that uses "$STARTPLAN", and "$SOURCE_DIR" for the
#                    root of the source tree
#     expected.out   standard output
#     expected.err   standard error; absent for none
#     expected.code  exit status
# It runs in a copy of its folder. --update rewrites the expectations, to be reviewed in the diff.
set -u

here=$(cd "$(dirname "$0")" && pwd)
STARTPLAN=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
SOURCE_DIR=$(cd "$here/../.." && pwd)
export STARTPLAN SOURCE_DIR
shift
update=no
if [ "${1:-}" = --update ]; then
    update=yes
    shift
fi

LC_ALL=C
TERM=dumb
export LC_ALL TERM
unset NO_COLOR COLUMNS

scratch=$(mktemp -d) || exit 2
trap 'rm -rf "$scratch"' EXIT
trap 'exit 2' HUP INT TERM

# Leaves what the case says in $scratch/out, err and code.
run_case() {
    rm -rf "$scratch/case"
    cp -R "$1" "$scratch/case"
    (
        cd "$scratch/case" || exit 99
        if [ -f run ]; then
            exec timeout 60 sh ./run
        fi
        eval "set -- $(cat args)"
        exec timeout 60 "$STARTPLAN" "$@"
    ) >"$scratch/out" 2>"$scratch/err" </dev/null
    echo $? >"$scratch/code"
}

save_expectations() {
    cp "$scratch/out" "$1/expected.out"
    cp "$scratch/code" "$1/expected.code"
    rm -f "$1/expected.err"
    if [ -s "$scratch/err" ]; then
        cp "$scratch/err" "$1/expected.err"
    fi
}

# Shows the differences; succeeds if there are none.
compare() {
    result=0
    for kind in out err code; do
        expected=$1/expected.$kind
        if [ "$kind" = err ] && [ ! -f "$expected" ]; then
            expected=/dev/null
        fi
        diff -u "$expected" "$scratch/$kind" || result=1
    done
    return $result
}

[ $# -gt 0 ] || set -- "$here"/cases/*/
count=0
failed=0
for case in "$@"; do
    case $case in
    */*) folder=${case%/} ;;
    *) folder=$here/cases/$case ;;
    esac
    if [ ! -f "$folder/args" ] && [ ! -f "$folder/run" ]; then
        echo "FAILED: $folder has neither args nor run"
        failed=$((failed + 1))
        continue
    fi
    count=$((count + 1))
    run_case "$folder"
    if [ "$update" = yes ]; then
        save_expectations "$folder"
    elif ! compare "$folder"; then
        echo "FAILED: $(basename "$folder")"
        failed=$((failed + 1))
    fi
done
echo "$count cases, $failed failed"
[ "$failed" -eq 0 ] && [ "$count" -gt 0 ]
