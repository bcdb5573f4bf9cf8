#!/usr/bin/env bash
# Selected text is carried to another place with the mouse, in one step of undo; with Ctrl it is copied.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/note.txt
printf 'one two three' >"$file"
ui_open "$file"
read -r left top < <(xwininfo -id "$ui_window" |
    awk '/Absolute upper-left X/{x=$4} /Absolute upper-left Y/{y=$4} END{print x, y}')
row=$((top + 58))

# Carries what stands at the start of the row far behind its end, in steps like those of a hand.
carry() {
    local step
    xdotool mousemove $((left + 66)) $row mousedown 1
    for step in 4 9 16 40 90 160 260 300; do
        xdotool mousemove $((left + 66 + step)) $row
        sleep 0.05
    done
    xdotool mouseup 1
}
is_after_save() {
    ui_keys ctrl+s
    ui_file_is "$file" "$1"
}

ui_keys Home shift+Right shift+Right shift+Right shift+Right
carry
ui_wait "the text has moved behind the end" is_after_save 'two threeone '
ui_keys ctrl+z
ui_wait "one step brings it back" is_after_save 'one two three'

ui_keys Home shift+Right shift+Right shift+Right shift+Right
carry_with_ctrl() {
    local step
    xdotool mousemove $((left + 66)) $row mousedown 1
    for step in 4 9 16 40; do
        xdotool mousemove $((left + 66 + step)) $row
        sleep 0.05
    done
    xdotool keydown ctrl
    for step in 90 160 260 300; do
        xdotool mousemove $((left + 66 + step)) $row
        sleep 0.05
    done
    xdotool mouseup 1
    xdotool keyup ctrl
}
carry_with_ctrl
ui_wait "with Ctrl the text is there twice" is_after_save 'one two threeone '
