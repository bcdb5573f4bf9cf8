#!/usr/bin/env bash
# Bindings hold on keyboards that are not American, and what these type reaches the text.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

# Places, as the kernel numbers them.
control=29 alt_gr=100 q=16 z=44 a=30

# Saves on an American keyboard: the binding of a menu item is not what is tested here.
saves() {
    ui_layout us
    ui_keys ctrl+s
    ui_wait "$1" ui_file_is "$file" "$2"
}

file=$ui_folder/note.txt
: >"$file"
ui_open "$file"

ui_layout ru
ui_places $a
saves "a Cyrillic letter is typed" 'ф'

ui_layout ru
ui_places $control+$z
saves "the place of Z undoes on a Cyrillic keyboard" ''

ui_layout de
ui_places $alt_gr+$q
saves "AltGr types a sign" '@'

ui_layout us dvorak
ui_places $control+$a 31
saves "the A of another Latin layout selects all, and its O replaces it" 'o'
