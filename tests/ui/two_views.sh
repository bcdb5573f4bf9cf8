#!/usr/bin/env bash
# Two columns on one file: what is typed in one shows in the other, and a tab is dragged across.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

mkdir -p "$ui_home/.tavrel-code"
printf '{editor: {columnWidth: 60}, keys: {f9: {newView}, f10: {moveToEditor editor: 1}}}' \
    >"$ui_home/.tavrel-code/settings.cson"
file=$ui_folder/note.txt
printf 'one\n' >"$file"
ui_open "$file"

ui_keys F9
ui_type 'second '
ui_keys ctrl+1 End
ui_type 'first'
ui_keys ctrl+s
ui_wait "both views have changed one text" ui_file_is "$file" $'second one\nfirst'

# Undo belongs to the document, whichever view asks for it.
ui_keys ctrl+2 ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z \
    ctrl+z ctrl+s
ui_wait "the other view undoes it all" ui_file_is "$file" $'one\n'

# Closing one of two views asks nothing.
ui_type 'x'
ui_keys ctrl+shift+w ctrl+1
ui_type 'y'
ui_keys ctrl+s
ui_wait "the first view goes on" grep -q 'x' "$file"

# The tab is dragged from the first column over the text of the second, which types on in it.
ui_keys ctrl+1
read -r left top < <(xwininfo -id "$ui_window" |
    awk '/Absolute upper-left X/{x=$4} /Absolute upper-left Y/{y=$4} END{print x, y}')
drag() {
    xdotool mousemove $((left + 50)) $((top + 36)) mousedown 1
    for step in 2 4 8 40 200 500 700; do
        xdotool mousemove $((left + 50 + step)) $((top + 36 + step / 2))
        sleep 0.05
    done
    xdotool mouseup 1
}
drag
typed_in_second() {
    ui_keys ctrl+2
    ui_type 'z'
    ui_keys ctrl+s
    grep -q 'z' "$file"
}
ui_wait "the tab is in the second column" typed_in_second
