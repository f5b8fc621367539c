#!/bin/sh
# library_size.sh FOLDER [PREFIX]: how large the library installed below FOLDER is when stripped, as a file and
# as size(1) counts it, held under the limits of its machine. It is what the preset minimal builds; PREFIX begins
# the names of the binary utilities for its machine, such as aarch64-linux-gnu-.
#
# The limits lie some 5 % above the sizes that docs/embedding.md tells. Who passes one with good reason raises
# it here, and the numbers there.
set -eu

library=$(find "$1" -name 'libstartplan.so.*.*')
[ -n "$library" ] || {
  echo "There is no library below $1."
  exit 1
}
prefix=${2:-}

machine=$(readelf -h "$library" | sed -n 's/^ *Machine: *//p')
compiler=g++
! readelf -p .comment "$library" | grep -q clang || compiler=clang++
case "$machine by $compiler" in
*"X86-64 by g++") most_file=150000 most_text=136500 ;;
"AArch64 by g++") most_file=210000 most_text=137500 ;;
"ARM by g++") most_file=93000 most_text=87000 ;;
*)
  echo "skipped: no limits are known for $machine by $compiler"
  exit 77
  ;;
esac
most_data=3000 # with bss: what each process has of its own

stripped=$(mktemp)
trap 'rm -f "$stripped"' EXIT
"${prefix}strip" -o "$stripped" "$library"
file=$(wc -c <"$stripped")
# shellcheck disable=SC2046 # three numbers and more
set -- $("${prefix}size" "$stripped" | tail -n 1)
text=$1 data=$2 bss=$3

failed=0
hold() {
  printf '%-10s %8d bytes, at most %d\n' "$1" "$2" "$3"
  [ "$2" -gt 0 ] && [ "$2" -le "$3" ] || failed=1
}
echo "$machine:"
hold file "$file" $most_file
hold text "$text" $most_text
hold data+bss $((data + bss)) $most_data
[ $failed -eq 0 ] || echo "The library is larger than it may be."
exit $failed
