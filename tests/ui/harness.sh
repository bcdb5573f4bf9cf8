# What the tests of the real window share: a display, a window manager, a message bus and a home
# of their own, and ways to press keys and to wait. Sourced by the tests beside it:
#
#     source "$(dirname "$0")/harness.sh"
#     ui_begin "$@"
#     ui_open "$ui_folder/note.txt"
#     ui_keys ctrl+s
#     ui_wait "the file is saved" ui_file_is "$ui_folder/note.txt" 'text'
#
# ui_begin takes the program to test, and a folder for pictures of failures. A test ends with the
# status 0, or 1 after the first wait that was in vain. Nothing here sleeps for a fixed time: every
# step waits for what it needs, at most ui_seconds. Only processes started here are ended.

set -u
exec 9>&2  # Reports reach a person from inside a silenced command too.
ui_seconds=${UI_SECONDS:-20}
ui_pids=()

ui_fail() {
    echo "FAILED: $1" >&9
    if [[ -n ${DISPLAY:-} && -n ${ui_pictures:-} ]]; then
        mkdir -p "$ui_pictures"
        ui_screenshot "$ui_pictures/$(basename "$0" .sh).png" &&
            echo "picture: $ui_pictures/$(basename "$0" .sh).png" >&9
    fi
    [[ -s ${ui_home:-}/program.log ]] && tail -n 20 "$ui_home/program.log" >&9
    exit 1
}

# ui_wait WHAT COMMAND...: until the command succeeds.
ui_wait() {
    local what=$1 end=$((SECONDS + ui_seconds))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || ui_fail "waited $ui_seconds s in vain: $what"
        sleep 0.02
    done
}

ui_end() {
    local pid
    # The last one started goes first, and each is waited for.
    for ((index = ${#ui_pids[@]} - 1; index >= 0; index--)); do
        pid=${ui_pids[index]}
        kill "$pid" 2>/dev/null
        wait "$pid" 2>/dev/null
    done
    [[ -n ${ui_home:-} ]] && rm -rf "$ui_home"
}

ui_begin() {
    ui_program=$(realpath "$1")
    ui_pictures=${2:-}
    [[ -x $ui_program ]] || ui_fail "no program at $1"
    ui_home=$(mktemp -d)
    ui_folder=$ui_home/files
    mkdir -m 700 "$ui_home/run" "$ui_folder"
    trap ui_end EXIT
    export HOME=$ui_home XDG_CONFIG_HOME=$ui_home/.config XDG_DATA_HOME=$ui_home/.local/share
    export XDG_CACHE_HOME=$ui_home/.cache XDG_STATE_HOME=$ui_home/.local/state
    export XDG_RUNTIME_DIR=$ui_home/run LC_ALL=C.UTF-8
    export QT_QPA_PLATFORM=xcb NO_AT_BRIDGE=1
    unset WAYLAND_DISPLAY XAUTHORITY QT_IM_MODULE

    # The server picks a free display and writes its number when it is ready.
    Xvfb -displayfd 7 -screen 0 1280x820x24 -nolisten tcp -noreset \
        7>"$ui_home/display" 9>&- >"$ui_home/server.log" 2>&1 &
    ui_pids+=($!)
    ui_wait "the display" grep -q '[0-9]' "$ui_home/display"
    DISPLAY=:$(<"$ui_home/display")
    export DISPLAY

    dbus-daemon --session --nofork --nopidfile --address="unix:path=$ui_home/run/bus" \
        >"$ui_home/bus.log" 2>&1 9>&- &
    ui_pids+=($!)
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$ui_home/run/bus
    ui_wait "the message bus" test -S "$ui_home/run/bus"

    openbox --sm-disable >"$ui_home/manager.log" 2>&1 9>&- &
    ui_pids+=($!)
    ui_wait "the window manager" ui_has_manager
}

ui_has_manager() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}

# ui_open ARGUMENTS...: starts the program; its window has the focus when this returns.
ui_open() {
    "$ui_program" "$@" >"$ui_home/program.log" 2>&1 9>&- &
    ui_program_pid=$!
    ui_pids+=("$ui_program_pid")
    ui_wait "the window has the focus" ui_program_has_focus
}

ui_program_has_focus() {
    local focused
    kill -0 "$ui_program_pid" || ui_fail "the program ended by itself"
    focused=$(xdotool getwindowfocus) || return 1
    [[ $(xprop -id "$focused" _NET_WM_PID) == *" = $ui_program_pid" ]] && ui_window=$focused
}

# Whether the program has ended, for a wait.
ui_program_is_gone() {
    ! kill -0 "$ui_program_pid" 2>/dev/null
}

# ui_layout LAYOUT [VARIANT]: the keyboard of the display, such as "de" or "us dvorak".
ui_layout() {
    setxkbmap -layout "$1" ${2:+-variant "$2"} || ui_fail "no keyboard layout $1"
}

# ui_keys KEY...: presses chords by the names of the layout's characters, such as ctrl+s.
ui_keys() {
    xdotool key --clearmodifiers "$@" || ui_fail "cannot press $*"
}

# ui_places CODE...: presses keys by their place, as the kernel numbers them (30 is the key of "A" on an
# American keyboard). "29+31" holds the first while the second is pressed.
ui_places() {
    local chord code codes
    for chord in "$@"; do
        codes=()
        for code in ${chord//+/ }; do
            codes+=($((code + 8)))
        done
        for code in "${codes[@]}"; do
            xdotool keydown "$code" || ui_fail "cannot press $chord"
        done
        for ((index = ${#codes[@]} - 1; index >= 0; index--)); do
            xdotool keyup "${codes[index]}"
        done
    done
}

# ui_type TEXT: types characters of the layout.
ui_type() {
    xdotool type --delay 2 -- "$1" || ui_fail "cannot type $1"
}

# ui_file_is FILE TEXT: whether the file holds exactly the text.
ui_file_is() {
    printf '%s' "$2" | cmp -s - "$1"
}

# ui_screenshot FILE: the whole display as a PNG.
ui_screenshot() {
    import -silent -window root "$1"
}

# ui_has_picture FILE: whether the PNG shows more than one colour.
ui_has_picture() {
    [[ $(identify -format '%k' "$1") -gt 1 ]]
}
