#!/bin/sh
# Writes down the ABI of a libstartplan.so that holds debug information: its public classes, functions, enumerators.
# The same library gives the same bytes in every folder.
#
#     abi_dump.sh LIBRARY DUMP
set -eu

here=$(cd "$(dirname "$0")" && pwd)
# What is public is decided by the headers, not by this build's paths. The names of parameters are no part of an ABI.
abidw --headers-dir "$here/../../include/startplan" --drop-private-types --suppressions "$here/abi_types.ini" \
  --exported-interfaces-only --no-comp-dir-path --no-corpus-path --no-show-locs --no-parameter-names \
  --type-id-style hash --out-file "$2" "$1"
sed -i "s| path='[^']*/\([a-z]*/[a-z_]*\.cpp\)'| path='\1'|" "$2"
