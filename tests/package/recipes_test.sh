#!/bin/sh
# recipes_test.sh SOURCE_DIR: the example recipes are for this version, give CMake only options that there are,
# and say that nobody has tried them.
set -eu
cd "$1"

failed=0
fail() {
  echo "$*"
  failed=1
}

version=$(sed -n 's/^project(startplan VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
yocto=packaging/yocto/startplan_$version.bb
buildroot=packaging/buildroot/startplan.mk
[ -e "$yocto" ] || {
  echo "there is no $yocto"
  exit 1
}
[ "$(echo packaging/yocto/*.bb)" = "$yocto" ] || fail "more recipes than one: $(echo packaging/yocto/*.bb)"
grep -qxF "STARTPLAN_VERSION = $version" "$buildroot" || fail "$buildroot is not for $version"

for recipe in "$yocto" "$buildroot"; do
  options=$(sed -n 's/^[[:space:]]*-D\([A-Z_]*\)=.*/\1/p' "$recipe")
  [ -n "$options" ] || fail "$recipe gives no options"
  for option in $options; do
    case $option in
    CMAKE_BUILD_TYPE | BUILD_TESTING) ;;
    *) grep -q "^option($option " CMakeLists.txt || fail "$recipe: there is no option $option" ;;
    esac
  done
done
for recipe in "$yocto" "$buildroot" packaging/buildroot/Config.in; do
  grep -q '^# UNTESTED ' "$recipe" || fail "$recipe does not say that it is untested"
done
exit $failed
