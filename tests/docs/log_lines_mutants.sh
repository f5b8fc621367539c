#!/bin/sh
# shellcheck disable=SC2016 # sed's commands hold signs that the shell would expand
#
# Holds that log_lines.py notices what it is there for: each change below, to a copy of the sources or of the page,
# must make it fail, and the unchanged copy must pass.
#
#     log_lines_mutants.sh ROOT
set -eu

root=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
trap 'exit 2' HUP INT TERM
failed=0

restore() {
    rm -rf "${copy:?}"/*
    mkdir "$copy/docs"
    cp -r "$root/yaml" "$root/manifest" "$root/parser" "$root/depend" "$root/include" "$copy"
    cp "$root/docs/log_lines.md" "$copy/docs"
}

# mutant NAME FILE SED_COMMAND
mutant() {
    restore
    sed -i "$3" "$copy/$2"
    if cmp -s "$root/$2" "$copy/$2"; then
        echo "$1: $2 has nothing to change"
        failed=1
    elif python3 "$here/log_lines.py" "$copy" >"$copy/output"; then
        echo "$1: not noticed"
        failed=1
    else
        echo "$1: $(head -n 1 "$copy/output")"
    fi
}

restore
python3 "$here/log_lines.py" "$copy"
page=docs/log_lines.md
mutant "source: format" parser/list_readers.cpp 's/no env config!/no env config/'
mutant "source: blank in a format" depend/start_graph.cpp 's/depend  %s/depend %s/'
mutant "source: second part of a format" parser/startup_file.cpp 's/"termTimeOut=/"termTimeout=/'
mutant "source: priority" depend/depend_graph.cpp 's/LOG_WARNING/LOG_INFO/'
mutant "source: line removed" parser/startup_tree.cpp '/No startup file/d'
mutant "source: line added" manifest/application_manifest.cpp '$a void F() { syslog(LOG_INFO, "made"); }'
mutant "source: format not spelt out" manifest/application_manifest.cpp '$a void F() { syslog(LOG_INFO, kText); }'
mutant "source: another logging call" manifest/application_manifest.cpp '$a void F() { vsyslog(LOG_INFO, "made", a); }'
mutant "source: number" yaml/yaml_log.h 's/kOpenFailed = 167/kOpenFailed = 168/'
mutant "source: operation" yaml/sequences.cpp 's/"GetSequenceString"/"GetSequenceStrings"/'
mutant "source: tag" yaml/yaml_log.h 's/YAMLPARSE/YAML/'
mutant "page: format" $page 's/^LOG_WARNING "no env config!"/LOG_WARNING "no env config"/'
mutant "page: priority" $page 's/^LOG_WARNING "no env config!"/LOG_INFO "no env config!"/'
mutant "page: line removed" $page '/^LOG_ERR "No startup file/d'
mutant "page: line added" $page 's/^## Fixed.*/```\nLOG_INFO "made"\n```\nDependGraph::Pop() in `depend\/depend_graph.cpp`.\n\n&/'
mutant "page: file" $page 's/`parser\/restart_policy.cpp`/`parser\/list_readers.cpp`/'
mutant "page: operation" $page 's/YamlParser::GetRestart()/YamlParser::GetPolicy()/'
mutant "page: number of a line" $page 's/, number 240;/, number 228;/'
mutant "page: row removed" $page '/^| 240 |/d'
mutant "page: row's operation" $page 's/^| 240 | `GetSubKvs`/| 240 | `GetArray`/'
exit $failed
