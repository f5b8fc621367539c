# Completes lines with bash's script; see completion_test.sh. Each line is given in the words that bash cuts it
# into: at "=" and ":", too.
PATH=$(dirname "$STARTPLAN"):$PATH
source "$1"
failed=0

# expect WORD... -- ANSWER...: what TAB offers behind these words. "FILES" as the answer: file names are left
# to bash.
expect()
{
    local expected got
    COMP_WORDS=()
    while [[ $1 != -- ]]; do
        COMP_WORDS+=("$1")
        shift
    done
    shift
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMP_LINE=${COMP_WORDS[*]}
    COMP_LINE=${COMP_LINE// = /=}
    COMP_LINE=${COMP_LINE// =/=}
    COMP_LINE=${COMP_LINE// : /:}
    COMP_LINE=${COMP_LINE// :/:}
    COMP_POINT=${#COMP_LINE}
    isLeftToBash=yes
    _startplan
    expected=$(printf '<%s>' "$@")
    got=$(printf '<%s>' "${COMPREPLY[@]}")
    [[ ${#COMPREPLY[@]} == 0 && $isLeftToBash == yes ]] && got='<FILES>'
    if [[ $got != "$expected" ]]; then
        echo "$COMP_LINE: expected $expected, got $got"
        failed=$((failed + 1))
    fi
}

# Works within a completion only; "+o default" keeps bash from offering file names.
compopt()
{
    isLeftToBash=no
}

expect startplan ren -- render
expect startplan li -- list
expect startplan -c config/top.yaml li -- list
expect startplan list --fo -- --format
expect startplan list -f '' -- text json
expect startplan list --format = j -- json
expect startplan list --format = -- text json
expect startplan list --color = a -- auto always
expect startplan list --color c -- FILES
expect startplan list --color = never conf -- FILES
expect startplan list conf -- FILES
expect startplan list -r conf -- FILES
expect startplan list config/top.yaml '' -- ''
expect startplan plan '' -- start stop
expect startplan plan start conf -- FILES
expect startplan show config/top.yaml two -- 'two\ words'
expect startplan show config/top.yaml 'two\ w' -- 'two\ words'
expect startplan show config/top.yaml '"two w' -- 'two words'
expect startplan show 'config/my\ top.yaml' two -- 'two\ words'
expect startplan show '"config/my top.yaml"' "'two" -- 'two words'
expect startplan show config/top.yaml cam -- 'camera_\<1-3\>' camera_tool
expect startplan show config/top.yaml 'camera_\<' -- 'camera_\<1-3\>'
expect startplan show config/top.yaml '"camera_<' -- 'camera_<1-3>'
expect startplan show config/top.yaml it -- "it\\'s"
expect startplan plan start -c config/top.yaml camera_tool two -- 'two\ words'
expect startplan plan --config = config/top.yaml stop two -- 'two\ words'
expect startplan show config/top.yaml n -- ns:one ns:two
expect startplan show config/top.yaml ns : t -- two
expect startplan show config/top.yaml ns : -- one two
expect startplan show config/nowhere.yaml '' -- ''
expect startplan show config/top.yaml --nosuch '' -- ''
expect startplan completion f -- fish
[[ $failed == 0 ]]
