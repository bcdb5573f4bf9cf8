#!/usr/bin/env bash
# What the program prints, what it ends with, and the picture that it writes without a display.
set -u
program=$(realpath "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
export HOME=$folder XDG_RUNTIME_DIR=$folder

fail() { echo "FAILED: $1" >&2; exit 1; }

# status EXPECTED ARGUMENTS...: runs the program and leaves its output in out and err.
status() {
    local expected=$1
    shift
    timeout 60 "$program" "$@" >"$folder/out" 2>"$folder/err"
    local got=$?
    [[ $got == "$expected" ]] || fail "$* ended with $got instead of $expected"
}

status 0 --help
grep -q -- '--screenshot FILE' "$folder/out" || fail "--help names the options"
status 0 --version
grep -q '^Tavrel Code [0-9]' "$folder/out" || fail "--version names the version"
status 2 --wrong
grep -q 'unknown option --wrong' "$folder/err" || fail "a bad option is named"
status 2 --size 12
status 2 --screenshot

export QT_QPA_PLATFORM=offscreen
mkfifo "$folder/pipe"
printf 'one\n' >"$folder/file"
for argument in "$folder/file" "$folder/missing" "$folder" "$folder/pipe" /dev/null; do
    status 0 --screenshot "$folder/picture.png" --size 900x600 "$argument"
    file=$(head -c 24 "$folder/picture.png" | od -An -tx1 | tr -d ' \n')
    [[ $file == 89504e470d0a1a0a0000000d494844520000038400000258 ]] ||
        fail "$argument gives a picture of 900 x 600"
    rm "$folder/picture.png"
done
status 1 --screenshot "$folder/no/such/folder.png" "$folder/file"
grep -q 'could not write' "$folder/err" || fail "a picture that cannot be written is reported"
