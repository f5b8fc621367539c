#!/bin/sh
# library_dynamic_section.sh FOLDER MAJOR: what the loader reads of the library installed below FOLDER. It needs
# libyaml and the C++ run time and nothing else, names itself libstartplan.so.MAJOR, searches no folder of its
# own, and leaves code and the loader's tables unwritable and the stack unexecutable.
set -eu

library=$(find "$1" -name 'libstartplan.so.*.*')
[ -n "$library" ] || {
  echo "There is no library below $1."
  exit 1
}
major=$2
dynamic=$(readelf -dW "$library")
segments=$(readelf -lW "$library")

failed=0
fail() {
  echo "$*"
  failed=1
}

needed=$(printf '%s\n' "$dynamic" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p')
for name in $needed; do
  case $name in
  libyaml-0.so.2 | libstdc++.so.6 | libgcc_s.so.1 | libc.so.6 | libm.so.6 | ld-linux*.so.* | ld64.so.*) ;;
  *) fail "needs more than libyaml and the C++ run time: $name" ;;
  esac
done
for name in libyaml-0.so.2 libstdc++.so.6; do
  printf '%s\n' "$needed" | grep -qxF "$name" || fail "does not need $name; read of it: $needed"
done

soname=$(printf '%s\n' "$dynamic" | sed -n 's/.*(SONAME).*\[\(.*\)\]$/\1/p')
[ "$soname" = "libstartplan.so.$major" ] || fail "is called '$soname'"

if printf '%s\n' "$dynamic" | grep -E '\((RPATH|RUNPATH)\)'; then
  fail "searches folders of its own"
fi
if printf '%s\n' "$dynamic" | grep TEXTREL; then
  fail "has relocations in its code"
fi
stack=$(printf '%s\n' "$segments" | sed -n 's/^ *GNU_STACK *//p')
case $stack in
'') fail "says nothing of the stack, which is executable then" ;;
*E*) fail "wants an executable stack: $stack" ;;
esac
if printf '%s\n' "$segments" | grep -E '^ *LOAD .* RWE '; then
  fail "has code that can be written to"
fi
printf '%s\n' "$segments" | grep -q '^ *GNU_RELRO ' || fail "leaves the loader's tables writable"

# shellcheck disable=SC2086 # a list of names
[ $failed -ne 0 ] || echo "$soname needs" $needed
exit $failed
