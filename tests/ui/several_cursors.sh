#!/usr/bin/env bash
# A person edits in several places at once, by keys and by the mouse, and takes it back step by step.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/note.txt
text=$'word one\nword two\nword three\nword four\nword five\n'
printf '%s' "$text" >"$file"
ui_open "$file"

ui_keys F8 F8 F8
ui_type 'name'
ui_keys ctrl+s
ui_wait "three occurrences are replaced by what is typed behind them" \
    ui_file_is "$file" $'wordname one\nwordname two\nwordname three\nword four\nword five\n'
ui_keys ctrl+z ctrl+s
ui_wait "one step takes the word back everywhere" ui_file_is "$file" "$text"

ui_keys Escape
read -r left top < <(xwininfo -id "$ui_window" |
    awk '/Absolute upper-left X/{x=$4} /Absolute upper-left Y/{y=$4} END{print x, y}')
# The first row of the text, below menus and tabs; rows are 15 to 17 pixels high.
rows_top=$((top + 20 + 30 + 8))
printf 'X' >"$ui_folder/other.txt"
ui_keys Home shift+Right ctrl+c Left
for row in 1 2 3 4; do
    xdotool keydown ctrl mousemove $((left + 57)) $((rows_top + row * 16)) click 1 keyup ctrl
done
ui_keys ctrl+v ctrl+s
ui_wait "what is pasted goes to every cursor" \
    ui_file_is "$file" $'wword one\nwword two\nwword three\nwword four\nwword five\n'
ui_keys ctrl+z ctrl+s
ui_wait "one step takes it back" ui_file_is "$file" "$text"

ui_keys Escape End
ui_type 'one two'
sleep 1.1  # What follows is a step of its own.
ui_keys super+shift+a ctrl+s
ui_wait "two words become one name" ui_file_is "$file" "${text}oneTwo"
ui_keys ctrl+z ctrl+s
ui_wait "which is taken back alone" ui_file_is "$file" "${text}one two"
