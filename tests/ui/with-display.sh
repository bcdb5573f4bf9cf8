#!/usr/bin/env bash
# Runs a command on an X display of its own: tests/ui/with-display.sh COMMAND [ARGUMENT...]
#
# The display has a window manager, a session bus and an empty home folder; all of it goes when the command ends.
# The display listens on a local socket only. Answers with the status of the command, or 125 when the display
# does not come up.
set -euo pipefail

fail() {
    echo "with-display.sh: $1" >&2
    exit 125
}

scratch=$(mktemp -d)
processes=()
clean_up() {
    local status=$? process
    for process in "${processes[@]}"; do
        kill "$process" 2>/dev/null && wait "$process" 2>/dev/null
    done
    rm -rf "$scratch"
    exit "$status"
}
trap clean_up EXIT
trap 'exit 130' INT TERM

# The server takes the first free number and writes it when it is ready.
mkfifo "$scratch/number"
Xvfb -displayfd 3 -screen 0 "${TAVREL_DISPLAY_SIZE:-1600x1000x24}" -nolisten tcp -noreset \
    3>"$scratch/number" >"$scratch/xvfb.log" 2>&1 &
processes=("$!")
read -r -t 20 number <"$scratch/number" || fail "no display: $(tail -n 3 "$scratch/xvfb.log")"

mkdir -p "$scratch/home" "$scratch/runtime"
chmod 700 "$scratch/runtime"
export DISPLAY=:$number HOME=$scratch/home XDG_RUNTIME_DIR=$scratch/runtime QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME

openbox >"$scratch/openbox.log" 2>&1 &
processes=("$!" "${processes[@]}")
for ((tries = 0; tries < 200; ++tries)); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.05
done
((tries < 200)) || fail "no window manager: $(tail -n 3 "$scratch/openbox.log")"

dbus-run-session -- "$@"
