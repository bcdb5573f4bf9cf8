#!/usr/bin/env bash
# What is not saved is asked about: a tab that is closed, and a window. Escape is "Cancel", Return "Close".
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

mkdir -p "$ui_home/.tavrel-code"
printf '{editor: {autoSaveOnFocusLoss: false}}' >"$ui_home/.tavrel-code/settings.cson"
for name in a b; do printf 'old\n' >"$ui_folder/$name.txt"; done
ui_open "$ui_folder/a.txt" "$ui_folder/b.txt"

# ui_dialog: whether a second window of the program has the focus.
ui_dialog() {
    local focused
    focused=$(xdotool getwindowfocus) || return 1
    [[ $focused != "$ui_window" && $(xprop -id "$focused" _NET_WM_PID) == *" = $ui_program_pid" ]]
}
back_in_window() {
    [[ $(xdotool getwindowfocus) == "$ui_window" ]]
}

ui_type 'new '
ui_keys ctrl+shift+w
ui_wait "closing a modified tab asks" ui_dialog
ui_keys Escape
ui_wait "Escape goes back" back_in_window
ui_keys ctrl+s
ui_wait "the text is still there" ui_file_is "$ui_folder/b.txt" $'new old\n'

ui_type 'lost '
ui_keys ctrl+shift+w
ui_wait "it asks again" ui_dialog
ui_keys Return
ui_wait "Return closes" back_in_window
ui_type 'kept '
ui_keys ctrl+s
ui_wait "the other tab is shown" ui_file_is "$ui_folder/a.txt" $'kept old\n'
ui_file_is "$ui_folder/b.txt" $'new old\n' || ui_fail "a closed tab has been written"

ui_type 'x'
ui_keys ctrl+q
ui_wait "ending the program asks" ui_dialog
ui_keys Escape
ui_wait "Escape stays" back_in_window
ui_keys ctrl+q
ui_wait "it asks again" ui_dialog
ui_keys Return
ui_wait "the program ends" ui_program_is_gone
ui_file_is "$ui_folder/a.txt" $'kept old\n' || ui_fail "what was given up has been written"
