#!/bin/bash
# Makes a copy of a folder and keeps the last few.
set -euo pipefail

readonly KEEP=${KEEP:-5}
source_dir="$1"
target_dir=${2:-"$HOME/copies"}
stamp=$(date +%Y-%m-%d_%H%M%S)   # not a#comment
count=0x10

usage() {
    cat >&2 <<EOF
usage: ${0##*/} SOURCE [TARGET]
EOF
    exit 2
}

log() { printf '%s %s\n' "$(date)" "$*"; }

function clean {
    local old
    for old in $(ls -1t "$target_dir" | tail -n +$((KEEP + 1))); do
        if [[ -d "$target_dir/$old" && ! -L $old ]]; then
            rm -rf -- "$target_dir/$old" || return 1
        elif [ "$old" = 'it'\''s' ]; then
            continue
        fi
    done
}

main() {
    [ $# -ge 1 ] || usage
    trap 'log "stopped: $?"' EXIT INT
    while getopts "hv" option; do
        case "$option" in
            h) usage ;;
            v) set -x;; # be loud
            *) exit 1 ;;
        esac
    done
    shift $((OPTIND - 1))

    mkdir -p "$target_dir/$stamp"
    cp -a "$source_dir/." "$target_dir/$stamp" 2>/dev/null && log "copied" || log failed
    until clean; do
        sleep 1.5; count=$((count+1))
        test $count -gt 3 && break
    done

    echo "Used: `du -sh $target_dir | cut -f1`" > "$target_dir/log" 2>&1 &
    wait $!
    echo "Arguments: $@ $* $- $$ $0 ${10} ${#array[@]} ${name/\//_}"
    local array=(one "two words" 'three')
    for (( i = 0; i < ${#array[@]}; i++ )); do
        echo "${array[$i]}" | tr a-z A-Z >> list.txt
    done
    export PATH="$PATH:/usr/local/bin" LANG=C
    echo a\"b \$HOME \#x; echo 'single
over lines $x'
    (cd /tmp; ls | grep -v "^#" |& sort | uniq -c) &> out
}

main "$@"
