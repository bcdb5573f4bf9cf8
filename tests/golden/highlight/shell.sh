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
    (cd out; ls | grep -v "^#" |& sort | uniq -c) &> out
}

main "$@"

# More of what scripts hold.
declare -A names=([one]=1 [two]=2)
: "${NAME:=default}" "${LIST[@]:1:2}" "${TEXT%%.*}" "${#TEXT}"

read_lines() {
    while IFS=$'\t' read -r first rest; do
        [[ $first =~ ^[0-9]+$ ]] && numbers+=("$first")
        if (( first % 2 == 0 )) || [ -z "$rest" ]; then
            echo -n "$first: $rest" 1>&2
        fi
    done < "${1:-/dev/stdin}"
}

select choice in start stop quit; do
    case $choice in
        start|run) start_server & pid=$! ;;
        stop) kill -TERM "$pid" || true ;;
        [Qq]uit) break ;;
    esac
done

result=$(grep -c "^error" <(sort log.txt) || echo 0)
sum=$((result * 2 + 0x0F))
if test -f "$HOME/.config" -a ! -e lock; then . "$HOME/.config"; fi
until ping -c1 host >/dev/null; do sleep 2; done
printf '%d\n' {1..5} | xargs -n1 -I{} echo item {}
echo `date` # now
echo "a # b" 'c # d' e#f \# g;# comment
echo $1$2 ${3} $10 "$(echo "inner (x)")"
find . -name '*.sh' -exec chmod +x {} \;
awk '{ print $1 }' file | sed 's/a/b/g' > out.txt
let "x = 5" ; export -f read_lines
unset names[one]; local y=$x
exec 3<> pipe; echo hi >&3; exec 3>&-
wait; exit "$?"
echo "open string
