#!/usr/bin/env bash
# A person opens the settings, and what is saved there is in force at once: a key bound anew, then a
# broken file that changes nothing, then a mended one.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/note.txt
settings=$ui_home/.tavrel-code/settings.cson
printf 'one' >"$file"
ui_open "$file"
ui_keys ctrl+comma
ui_wait "the settings file is made" grep -q 'selectAll' "$settings"
ui_keys ctrl+q
ui_wait "the program ends" ui_program_is_gone

# f9_makes_file TEXT: whether the key bound in the settings leaves this text in the saved file.
f9_makes_file() {
    ui_keys F9 ctrl+s
    ui_file_is "$file" "$1"
}

ui_open "$file"
printf '{keys: {f9: [{selectAll} {erase}]}}' >"$settings"
ui_wait "a key bound while the program runs works" f9_makes_file ''
ui_keys ctrl+q
ui_wait "the program ends" ui_program_is_gone

ui_open "$file"
ui_type 'two'
ui_wait "the binding is in force from the start" f9_makes_file ''
ui_wait "the file is brought up to date" grep -q 'colors' "$settings"

# Replaced by renaming, as many programs save.
printf '{keys: {f9: {undo' >"$ui_home/broken" && mv "$ui_home/broken" "$settings"
ui_type 'abc'
ui_wait "a broken file leaves the binding in force" f9_makes_file ''
printf '{keys: {f9: {setCursor cursor: -1}}}' >"$ui_home/mended" && mv "$ui_home/mended" "$settings"
letter_stays() {
    ui_type 'x'
    ui_keys F9 ctrl+s
    [[ $(<"$file") == x* ]]
}
ui_wait "the mended file is in force" letter_stays
