#!/usr/bin/env bash
# The right button on a colour opens the colour panel, which writes the colour that is chosen there.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/style.css
printf '#112233;\n' >"$file"
ui_open "$file"
read -r left top < <(xwininfo -id "$ui_window" |
    awk '/Absolute upper-left X/{x=$4} /Absolute upper-left Y/{y=$4} END{print x, y}')

ui_panel() {
    xdotool search --all --onlyvisible --pid "$ui_program_pid" --name '^Color$'
}
panel_is_gone() {
    ! ui_panel
}
xdotool mousemove $((left + 80)) $((top + 58)) click 3
ui_wait "the colour panel opens" ui_panel
panel=$(ui_panel | head -n 1)
# The field for the colour's name lies in the lower right corner.
read -r panel_left panel_top panel_width panel_height < <(xwininfo -id "$panel" | awk '
    /Absolute upper-left X/ { x = $4 }
    /Absolute upper-left Y/ { y = $4 }
    /Width/ { w = $2 }
    /Height/ { h = $2 }
    END { print x, y, w, h }')
panel_has_focus() {
    xdotool mousemove $((panel_left + panel_width - 110)) $((panel_top + panel_height - 29)) click 1
    [[ $(xdotool getwindowfocus) == "$panel" ]]
}
ui_wait "the panel has the focus" panel_has_focus
ui_keys ctrl+a
ui_type '#445566'
ui_keys Tab
xdotool key Escape
ui_wait "the panel closes" panel_is_gone
ui_wait "the window has the focus again" ui_program_has_focus
ui_keys ctrl+s
ui_wait "the colour is in the file" ui_file_is "$file" $'#445566;\n'
