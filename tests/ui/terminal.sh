#!/usr/bin/env bash
# The terminal under the editor: its shell gets the keys and the size, and the editor gets them back.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"
export SHELL=/bin/bash
printf 'PS1="$ "\n' >"$ui_home/.bashrc"
printf '. ~/.bashrc\n' >"$ui_home/.profile"

file=$ui_folder/note.txt
printf 'one\n' >"$file"
ui_open "$file"

# children: the shells that the program has started, one in a line.
children() {
    pgrep -P "$ui_program_pid" -x bash
}
ui_no_children() {
    ! children
}
ui_children_are() {
    [[ $(children | wc -l) == "$1" ]]
}
# ui_run COMMAND: types a command to the shell.
ui_run() {
    ui_type "$1"
    ui_keys Return
}
# ui_file_matches FILE EXPRESSION
ui_file_matches() {
    grep -Eqx "$2" "$1"
}
# ui_size_differs NEW OLD: asks the shell for its size until it is another one than that in OLD.
ui_size_differs() {
    ui_run "stty size > $1"
    grep -q . "$ui_home/$1" && ! cmp -s "$ui_home/$1" "$ui_home/$2"
}

ui_wait "no shell runs before the terminal is shown" ui_no_children

ui_keys ctrl+grave
ui_wait "the shell runs" ui_children_are 1
ui_run 'echo hello > hello.txt'
ui_wait "the shell has done what was typed" ui_file_is "$ui_home/hello.txt" $'hello\n'

# Keys that the window would take go to the shell.
ui_run 'cat -v > keys.txt; echo interrupted > done.txt'
ui_type 'a'
ui_keys ctrl+v ctrl+q ctrl+v ctrl+s ctrl+v ctrl+w F10 Alt_L Tab shift+Tab
ui_type 'b'
ui_keys Return ctrl+d
ui_wait "Ctrl+Q, Ctrl+S, Ctrl+W and Tab reach the program" \
    ui_file_is "$ui_home/keys.txt" $'a^Q^S^W\t\tb\n'

# What a keyboard composes reaches the program: a dead key, AltGr, another script.
ui_run 'cat > composed.txt'
ui_layout us intl
ui_places 40 18
ui_layout de
ui_places 100+16 21
ui_layout ru
ui_places 30
ui_layout us
ui_keys Return ctrl+d
ui_wait "composed characters reach the program" ui_file_is "$ui_home/composed.txt" $'é@zф\n'

ui_run 'sleep 1000; echo $? > status.txt'
ui_wait "the command runs" pgrep -f '^sleep 1000$'
ui_keys ctrl+c
ui_run 'echo $? > status.txt'
ui_wait "Ctrl+C interrupts" ui_file_is "$ui_home/status.txt" $'130\n'

# The size follows the window and the divider.
ui_run 'stty size > first.txt'
ui_wait "the shell has a size" ui_file_matches "$ui_home/first.txt" '[0-9]+ [0-9]+'
xdotool windowsize --sync "$ui_window" 900 600
ui_wait "the shell is told of the window's new size" ui_size_differs second.txt first.txt
divider=$((600 - 24 - 190 + 2))  # From the top of the window, above the terminal and the status line.
xdotool mousemove --window "$ui_window" 300 "$divider" mousedown 1 \
    mousemove --window "$ui_window" 300 $((divider - 60)) \
    mousemove --window "$ui_window" 300 $((divider - 120)) mouseup 1
ui_wait "the shell is told of the place of the divider" ui_size_differs third.txt second.txt

# Copy, paste, tabs, and back to the editor.
ui_run 'clear; printf "take this\n"'
xdotool key --clearmodifiers ctrl+shift+t
ui_wait "Ctrl+Shift+T opens a tab" ui_children_are 2
ui_run 'echo $$ > tab.txt'
ui_wait "the new tab has the keys" ui_file_matches "$ui_home/tab.txt" '[0-9]+'
xdotool key --clearmodifiers ctrl+shift+w
ui_wait "Ctrl+Shift+W closes it" ui_children_are 1

ui_keys ctrl+1
ui_type 'x'
ui_keys ctrl+s
ui_wait "Ctrl+1 gives the keys to the editor" ui_file_is "$file" $'xone\n'
ui_keys ctrl+t
ui_wait "Ctrl+T in the editor opens a tab" ui_children_are 2
xdotool key --clearmodifiers ctrl+shift+w
ui_wait "Ctrl+Shift+W closes it again" ui_children_are 1
ui_keys ctrl+1 ctrl+a ctrl+c ctrl+grave ctrl+grave
ui_type 'cat > pasted.txt'
ui_keys Return
xdotool key --clearmodifiers ctrl+shift+v
ui_keys ctrl+d
ui_wait "Ctrl+Shift+V pastes" ui_file_is "$ui_home/pasted.txt" $'xone\n'

# A shell that ends waits for Return.
ui_run 'exit'
ui_wait "the shell has ended" ui_no_children
ui_keys Return
ui_wait "Return starts another" ui_children_are 1

# Hidden, the terminal keeps its shell and the editor has the keys.
ui_keys ctrl+grave
ui_keys ctrl+Home
ui_type 'y'
ui_keys ctrl+s
ui_wait "the editor has the keys again" ui_file_matches "$file" '.*y.*'
ui_wait "the hidden shell lives on" ui_children_are 1

ui_keys ctrl+q
ui_wait "the program has ended" ui_program_is_gone
