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

ui_keys ctrl+z ctrl+s
ui_wait "undo brings the text back" ui_file_is "$file" $'Hello one\ntwo\n\nlast'

ui_screenshot "$ui_home/window.png" || ui_fail "no screenshot"
ui_has_picture "$ui_home/window.png" || ui_fail "the window is blank"
