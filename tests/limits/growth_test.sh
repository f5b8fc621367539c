#!/bin/sh
# growth_test.sh PROGRAM WORK: ten times the input may cost at most fifteen times the instructions (a linear
# cost and the logarithm of the ordered containers; a table that is walked for each name would cost a
# hundred times as many).
set -eu

program=$1
work=$2
if ! command -v valgrind >/dev/null; then
  echo "skipped: valgrind is not installed"
  exit 77
fi

# Instructions within Measured(), without the making of the input.
count() {
  valgrind --tool=callgrind --callgrind-out-file=/dev/null --toggle-collect=Measured \
    "$program" "$work" "$1" 2>&1 |
    sed -n 's/.*Collected : \([0-9]*\).*/\1/p'
}

small=$(count 200)
large=$(count 2000)
echo "$work: $small instructions for 200, $large for 2000"
# A workload that did nothing would pass any ratio.
[ "$small" -gt 10000 ] && [ "$large" -gt "$small" ] && [ "$large" -le $((small * 15)) ]
