#!/usr/bin/env bash
# Keys that the toolkit would use for its menus and its focus belong to the text; Ctrl+Q ends the program.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/note.txt
printf 'one\n' >"$file"
ui_open "$file"

ui_keys Alt_L F10 Tab shift+Tab
ui_type 'x'
ui_keys ctrl+s
ui_wait "the text view has kept the focus, and Tab indents" ui_file_is "$file" $'  xone\n'

ui_keys ctrl+q
ui_wait "the program has ended" ui_program_is_gone
