#!/usr/bin/env bash
# Bindings hold on keyboards that are not American, and what these type reaches the text.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

# Places, as the kernel numbers them.
control=29 alt_gr=100 q=16 s=31 z_american=44 a=30

file=$ui_folder/note.txt
: >"$file"
ui_open "$file"

ui_layout ru
ui_places $a $control+$s
ui_wait "a Cyrillic letter is typed, and the place of S saves" ui_file_is "$file" 'ф'
ui_places $control+$z_american $control+$s
ui_wait "the place of Z undoes on a Cyrillic keyboard" ui_file_is "$file" ''

ui_layout de
ui_places $alt_gr+$q $control+$s
ui_wait "AltGr types a sign" ui_file_is "$file" '@'

ui_layout us dvorak
ui_places $s $control+39
ui_wait "the S of another Latin layout saves" ui_file_is "$file" '@o'
