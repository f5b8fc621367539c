#!/bin/sh
# Holds the scripts that "startplan completion" makes: each shell that is there finds no fault in its script and
# completes lines with it, and the scripts know every command and option that the help shows.
#
#     completion_test.sh STARTPLAN
#
# 77, a skipped test, if one of the shells is missing.
set -u

here=$(cd "$(dirname "$0")" && pwd)
STARTPLAN=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
export STARTPLAN
scratch=$(mktemp -d) || exit 2
trap 'rm -rf "$scratch"' EXIT
trap 'exit 2' HUP INT TERM
cd "$scratch" || exit 2
LC_ALL=C.UTF-8
HOME=$scratch
export LC_ALL HOME

failed=0
fail() {
    echo "FAILED: $*"
    failed=$((failed + 1))
}

for shell in bash zsh fish; do
    "$STARTPLAN" completion $shell >script.$shell || fail "no script for $shell"
    if ! command -v $shell >/dev/null; then
        echo "$shell is not installed"
        missing=yes
        continue
    fi
    $shell -n script.$shell || fail "$shell finds fault in its script"
done

# The help's own words: "  list  ...", "  -c, --config TOP  ...".
"$STARTPLAN" --help | sed -n 's/^  \([a-z]\{3,\}\)  *[A-Z].*/\1/p' >commands
[ "$(wc -l <commands)" -gt 4 ] || fail "no commands in the help"
while read -r command; do
    "$STARTPLAN" "$command" --help | sed -n 's/^  \(-.,\|   \) --\([a-z-]*\).*/\2/p' >options
    [ "$(wc -l <options)" -gt 8 ] || fail "no options in the help of $command"
    while read -r option; do
        grep -q -e "--$option[ '|=)]" script.bash || fail "bash does not know --$option of $command"
        grep -q -E "[*]--$option(=|\\[)" script.zsh || fail "zsh does not know --$option of $command"
        grep -q -e "-l $option " script.fish || fail "fish does not know --$option of $command"
    done <options
    grep -q "\\\\n$command\\\\n\|'$command\\\\n\|\\\\n$command'" script.bash || fail "bash does not know $command"
    grep -q "'$command:" script.zsh || fail "zsh does not know $command"
    grep -q -e "-a $command " script.fish || fail "fish does not know $command"
done <commands

mkdir config
cat >config/apps.yaml <<'END'
"two words": {bin_path: /opt/a}
"camera_<1-3>": {bin_path: /opt/b}
camera_tool: {bin_path: /opt/c}
"it's": {bin_path: /opt/d}
"ns:one": {bin_path: /opt/e}
"ns:two": {bin_path: /opt/f}
END
echo 'startup_path_list: [config/apps.yaml]' >config/top.yaml
cp config/top.yaml 'config/my top.yaml'

for shell in bash fish; do
    command -v $shell >/dev/null || continue
    $shell "$here/completion_cases.$shell" "$scratch/script.$shell" || fail "$shell completes wrongly"
done

echo "$failed failed"
[ "$failed" -eq 0 ] || exit 1
[ -z "${missing:-}" ] || exit 77
