#!/bin/sh
# Holds that each shell finds the installed script where it looks for such scripts, and completes with it.
#
#     complete.sh PREFIX
set -u

prefix=$1
home=$(mktemp -d) || exit 2
trap 'rm -rf "$home"' EXIT
trap 'exit 2' HUP INT TERM
HOME=$home
XDG_CONFIG_HOME=$home
XDG_DATA_DIRS=$prefix/share
PATH=$prefix/bin:$PATH
export HOME XDG_CONFIG_HOME XDG_DATA_DIRS PATH

failed=0
expect() {
    echo "$1: $2"
    case $2 in
    *explain*) ;;
    *) failed=1 ;;
    esac
}

expect bash "$(bash -c '
    . /usr/share/bash-completion/bash_completion
    _completion_loader startplan
    complete -p startplan >/dev/null || exit 1
    compopt() { :; } # works within a completion only
    COMP_WORDS=(startplan expl) COMP_CWORD=1 COMP_LINE="startplan expl" COMP_POINT=14
    _startplan
    echo "${COMPREPLY[@]}"')"

# Without a terminal zsh completes nothing, so its own functions are played here.
expect zsh "$(zsh -f -c '
    fpath=($XDG_DATA_DIRS/zsh/vendor-completions $fpath)
    autoload -Uz compinit && compinit -u -D
    [[ $_comps[startplan] == _startplan ]] || exit 1
    _arguments() { _startplan_commands }
    _describe() { print -l -- "${(@P)2}" }
    words=(startplan expl) CURRENT=2
    _startplan' | grep "^explain:")"

expect fish "$(fish -c 'complete -C "startplan expl"')"
[ $failed -eq 0 ]
