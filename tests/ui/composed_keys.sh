#!/usr/bin/env bash
# Dead keys and the compose key type what they make together.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/note.txt
: >"$file"
ui_layout us intl
ui_open "$file"

# The place of the apostrophe, which is a dead acute here, and that of E.
ui_places 40 18
ui_keys ctrl+s
ui_wait "a dead accent and a letter are one" ui_file_is "$file" 'é'

setxkbmap -layout us -option compose:ralt || ui_fail "no compose key"
ui_places 100 40 30
ui_keys ctrl+s
ui_wait "the compose key makes a sign of two" ui_file_is "$file" 'éá'
