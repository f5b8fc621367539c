#!/bin/sh
# Compares the ABI of a libstartplan.so that holds debug information with the checked-in dump. Fails for every
# difference, since each of them asks for another version; docs/versioning.md tells which. Skipped, with status 77,
# where the dump does not apply.
#
#     abi_test.sh LIBRARY WORK_DIR
set -eu

here=$(cd "$(dirname "$0")" && pwd)
if ! command -v abidiff >/dev/null; then
    echo "abidiff is missing: install the package abigail-tools"
    exit 1
fi
if ! readelf -h "$1" | grep -q 'Machine: .*X86-64'; then
    echo "skipped: the checked-in dump is of x86-64"
    exit 77
fi
if ! readelf -p .comment "$1" | grep -q GCC: || readelf -p .comment "$1" | grep -q clang; then
    echo "skipped: the checked-in dump is of g++, and other compilers describe a class in other words"
    exit 77
fi
if ! readelf -S "$1" | grep -q '\.debug_info'; then
    echo "the library holds no debug information: build it with -g"
    exit 1
fi

# Classes with their sizes, members with their places, enumerators with their values. abidiff compares what some
# function reaches; these count for clients in any case, for they have them from the headers.
outline() {
    awk '/<(class-decl|enum-decl|enumerator) / { print }
         /<data-member / { member = $0; getline; print member $0 }' "$1" | sort
}

expected=$here/abi_x86_64.xml
mkdir -p "$2"
sh "$here/abi_dump.sh" "$1" "$2/abi_x86_64.xml"
outline "$expected" >"$2/outline.expected"
outline "$2/abi_x86_64.xml" >"$2/outline"

status=0
abidiff --no-default-suppression "$expected" "$2/abi_x86_64.xml" >"$2/abi_diff.txt" || status=$?
cat "$2/abi_diff.txt"
if [ $((status & 3)) -ne 0 ] || [ $status -gt 15 ]; then
    echo "abidiff could not compare (status $status)"
    exit 1
fi
if [ $status -eq 0 ] && diff "$2/outline.expected" "$2/outline"; then
    exit 0
fi
echo
if [ $status -eq 0 ] || grep -Eq '[1-9][0-9]* (Removed|Changed|removed|changed)|SONAME changed' "$2/abi_diff.txt"; then
    echo "The ABI has CHANGED: programs built against the dump no longer fit this library. Undo that; or, for the next"
    echo "major version, raise VERSION and the names STARTPLAN_n, then run scripts/renew_abi (docs/versioning.md)."
else
    echo "The library has something NEW. Raise the minor version, list new symbols in exported_symbols.txt, and run"
    echo "scripts/renew_abi (docs/versioning.md)."
fi
exit 1
