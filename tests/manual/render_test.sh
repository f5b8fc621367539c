#!/bin/sh
# Holds that every page of the manual is shown without a warning, by groff and by mandoc, that nothing in it is
# hyphenated, and that it can be found by what its first line says.
#
#     render_test.sh FOLDER CHANGELOG
#
# FOLDER has man1 and so on. While CHANGELOG calls the version unreleased its pages have no date, and mandoc says so:
# that one warning is let pass then. 77, a skipped test, if a formatter is missing.
set -u

folder=$1
changelog=$2
LC_ALL=C.UTF-8
MANWIDTH=80
export LC_ALL MANWIDTH
unset MANPAGER PAGER MANROFFOPT GROFF_NO_SGR

for program in man mandoc groff lexgrog; do
    if ! command -v $program >/dev/null; then
        echo "$program is not installed"
        exit 77
    fi
done
allowed='nothing'
if grep -q '^## \[[0-9.]*\] - unreleased$' "$changelog"; then
    allowed='WARNING: missing date, using "": TH$'
fi

scratch=$(mktemp -d) || exit 2
trap 'rm -rf "$scratch"' EXIT
trap 'exit 2' HUP INT TERM
failed=0
fail() {
    echo "FAILED: $page: $*"
    failed=$((failed + 1))
}

pages=0
for page in "$folder"/man?/*; do
    pages=$((pages + 1))
    name=$(basename "$page")
    mandoc -Tlint -Wall "$page" | grep -v "$allowed" >"$scratch/lint" && fail "mandoc: $(cat "$scratch/lint")"
    man --warnings -E UTF-8 -l -Tutf8 -Z "$page" >"$scratch/groff" 2>"$scratch/errors" || fail "man's status is $?"
    [ -s "$scratch/groff" ] || fail "groff makes nothing of it"
    [ ! -s "$scratch/errors" ] || fail "groff: $(cat "$scratch/errors")"
    man -l -P cat "$page" 2>/dev/null | grep '‐$' && fail "a word is hyphenated"
    case $(lexgrog "$page") in
    *": \"${name%.?} - "*) ;;
    *) fail "its first line is not found: $(lexgrog "$page")" ;;
    esac
done

echo "$pages pages"
[ $pages -gt 0 ] && [ $failed -eq 0 ]
