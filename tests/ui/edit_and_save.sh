#!/usr/bin/env bash
# A person opens a file, types, undoes, saves, and finds the text in the file.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/note.txt
printf 'one\ntwo\n' >"$file"
ui_open "$file"

ui_type 'Hello '
ui_keys ctrl+s
ui_wait "the typed text is saved" ui_file_is "$file" $'Hello one\ntwo\n'

ui_keys End Return
ui_type 'last'
ui_keys ctrl+s
ui_wait "the text behind the end is saved" ui_file_is "$file" $'Hello one\ntwo\n\nlast'

ui_keys ctrl+a BackSpace ctrl+s
ui_wait "an erased file is empty" ui_file_is "$file" ''

# How many groups the edits are depends on how fast they came; further presses do nothing.
for ((press = 0; press < 40; press++)); do ui_keys ctrl+z; done
ui_keys ctrl+s
ui_wait "undo brings back the text that was opened" ui_file_is "$file" $'one\ntwo\n'

ui_screenshot "$ui_home/window.png" || ui_fail "no screenshot"
ui_has_picture "$ui_home/window.png" || ui_fail "the window is blank"
