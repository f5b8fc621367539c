#!/bin/sh
# release_check_test.sh SOURCE_DIR: the release checklist, in a tree whose scripts only note that they were called.
set -u
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE # a hook's, which name another tree

source=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0
: >"$scratch/printed"
fail() {
  echo "FAILED: $*"
  cat "$scratch/printed"
  failed=1
}

# check STATUS OPTION...: what it printed is in $scratch/printed, the scripts it called in $scratch/called.
check() {
  expected=$1
  shift
  : >"$scratch/called"
  "$scratch/tree/scripts/release_check" "$@" >"$scratch/printed" 2>&1
  status=$?
  [ $status -eq "$expected" ] || fail "release_check $* ended with $status, not with $expected"
}
expect_called() {
  [ "$(cat "$scratch/called")" = "$1" ] || fail "called was: $(cat "$scratch/called"); expected: $1"
}
expect_printed() {
  grep -qF -e "$1" "$scratch/printed" || fail "it does not say: $1"
}

# Of the real tree: each step has a name of its own, and every script is there.
list=$("$source/scripts/release_check" --list)
scripts=$(printf '%s\n' "$list" | sed -n 's|^[a-z]*  *\(scripts/[a-z_]*\).*|\1|p')
[ "$(printf '%s\n' "$list" | sed 's/ .*//' | sort | uniq -d)" = '' ] || fail "a name is there twice"
[ "$(printf '%s\n' "$scripts" | wc -l)" -ge 10 ] || fail "hardly a step runs a script"
for script in $scripts; do
  [ -x "$source/$script" ] || fail "there is no $script to be run"
done

mkdir -p "$scratch/tree/scripts" "$scratch/tree/packaging/debian"
cd "$scratch/tree" || exit 1
cp "$source/scripts/release_check" scripts/
for script in $scripts; do
  # shellcheck disable=SC2016 # expands when the script runs
  printf '#!/bin/sh\necho "%s${1:+ $*}" >>%s/called\n' "$script" "$scratch" >"$script"
  chmod +x "$script"
done
echo 'project(startplan VERSION 2.3.4 LANGUAGES CXX' >CMakeLists.txt
printf '# Changelog\n\n## [2.3.4] - unreleased\n\n## [2.3.3] - 2026-01-02\n' >CHANGELOG.md
echo 'startplan (2.3.4-1) UNRELEASED; urgency=medium' >packaging/debian/changelog
echo /build/ >.gitignore
commit() {
  git add -A
  git -c user.name=test -c user.email=test@test.example -c commit.gpgsign=false commit -q -m change
}
git init -q .
commit

every_script=$(printf '%s\n' "$list" | sed -n 's|^[a-z]*  *\(scripts/.*\)|\1|p')
check 1
expect_printed "CHANGELOG.md has no date of release"
expect_called ''
check 0 --rehearse
expect_called "$every_script"
expect_printed "warning: CHANGELOG.md has no date of release"
expect_printed "warning: packaging/debian/changelog has no date of release"

sed -i 's/unreleased/2026-02-03/' CHANGELOG.md
check 1 --only tree
expect_printed "not committed"
commit
check 1
expect_printed "packaging/debian/changelog has no date of release"
sed -i 's/UNRELEASED/stable/' packaging/debian/changelog
commit
check 0
expect_called "$every_script"
check 0 --fuzz 7 --schedules 8 --from fuzz
expect_called "$(printf 'scripts/fuzz 7\nscripts/bench')"
check 0 --only schedules --schedules 8
expect_called "scripts/schedules 8"

echo 'exit 7' >>scripts/coverage
check 7 --rehearse --from package
expect_called "$(printf 'scripts/package\nscripts/coverage')"
expect_printed "scripts/release_check --from coverage"

for file in CHANGELOG.md packaging/debian/changelog CMakeLists.txt; do
  cp $file "$scratch/kept"
  sed -i 's/2\.3\.4/2.3.5/' $file
  check 1 --only versions
  rm $file
  check 1 --only versions
  cp "$scratch/kept" $file
done
check 0 --only versions

check 2 --only nonsense
expect_printed "unknown step nonsense"
check 2 --from 'c.*'
expect_called ''
check 2 --fuzz long
check 2 --from
check 2 --everything
exit $failed
