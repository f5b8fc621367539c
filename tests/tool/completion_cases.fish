# Completes lines with fish's script; see completion_test.sh.
set -x PATH (dirname $STARTPLAN) $PATH
source $argv[1]
set -g failed 0

# expect LINE ANSWER...: what TAB offers behind the line, without the descriptions.
function expect
    set -l got (complete -C $argv[1] | string replace -r '\t.*' '')
    if test "$got" != "$argv[2..-1]"
        echo "$argv[1]: expected $argv[2..-1], got $got"
        set failed (math $failed + 1)
    end
end

expect 'startplan ren' render
expect 'startplan -c config/top.yaml li' list
expect 'startplan list --fo' --format
expect 'startplan list -f ' json text
expect 'startplan list --format=j' --format=json
expect 'startplan list --color=a' --color=always --color=auto
expect 'startplan list conf' config/
expect 'startplan list -r config/t' config/top.yaml
expect 'startplan list --root conf' config/
expect 'startplan list config/top.yaml '
expect 'startplan plan ' start stop
expect 'startplan plan start config/t' config/top.yaml
expect 'startplan show config/top.yaml two' 'two words'
expect 'startplan show config/my\ top.yaml \'two w' 'two words'
expect 'startplan show config/top.yaml cam' 'camera_<1-3>' camera_tool
expect 'startplan show -c config/top.yaml camera_\<' 'camera_<1-3>'
expect 'startplan plan --config=config/top.yaml stop ns:' ns:one ns:two
expect 'startplan completion f' fish
test $failed -eq 0
