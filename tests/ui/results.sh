#!/usr/bin/env bash
# A click on a line of search results opens the file that the line names, and selects the line.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/found.txt
printf 'first\nsecond\nthird\n' >"$file"
printf '%s:2:\n  1: first\n> 2: second\n  3: third\n' "$file" >"$ui_folder/results"
ui_open --results "$ui_folder/results"
read -r left top < <(xwininfo -id "$ui_window" |
    awk '/Absolute upper-left X/{x=$4} /Absolute upper-left Y/{y=$4} END{print x, y}')

# The third line of the results, under menus and tabs.
xdotool mousemove $((left + 100)) $((top + 90)) click 1
ui_type 'changed'
ui_keys ctrl+s
ui_wait "the line is replaced in its file" ui_file_is "$file" $'first\nchanged\nthird\n'
