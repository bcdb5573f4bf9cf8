#!/usr/bin/env bash
# Another program writes the open file: it is read anew, or asked about where it has been edited.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

mkdir -p "$ui_home/.tavrel-code"
printf '{editor: {autoSaveOnFocusLoss: false}}' >"$ui_home/.tavrel-code/settings.cson"
file=$ui_folder/note.txt
printf 'one\n' >"$file"
ui_open "$file"

# As many programs save: a new file takes the place of the old one.
outside() {
    printf '%s' "$1" >"$ui_home/other" && mv "$ui_home/other" "$file"
}
ui_dialog() {
    local focused
    focused=$(xdotool getwindowfocus) || return 1
    [[ $focused != "$ui_window" && $(xprop -id "$focused" _NET_WM_PID) == *" = $ui_program_pid" ]]
}
back_in_window() {
    [[ $(xdotool getwindowfocus) == "$ui_window" ]]
}
# shows TEXT: whether what is copied out of the window is the text.
shows_two() {
    ui_keys Home ctrl+a ctrl+c End ctrl+v ctrl+s
    ui_file_is "$file" $'two\ntwo\n'
}

outside $'two\n'
sleep 0.5  # Nothing tells from outside that the text has been read anew.
ui_wait "an unedited text is read anew" shows_two

ui_keys ctrl+a
ui_type 'mine'
outside 'theirs'
ui_wait "an edited text is asked about" ui_dialog
ui_keys Escape
ui_wait "Escape keeps" back_in_window
ui_file_is "$file" 'theirs' || ui_fail "the question has written the file"
ui_keys ctrl+s
ui_wait "what is kept can be saved" ui_file_is "$file" 'mine'

ui_type '!'
outside 'theirs again'
ui_wait "the next change asks again" ui_dialog
ui_keys Tab Return
ui_wait "the second button reloads" back_in_window
ui_keys End
ui_type '.'
ui_keys ctrl+s
ui_wait "the text is that of the disk" ui_file_is "$file" 'theirs again.'
