#!/usr/bin/env bash
# Builds Tavrel Code and starts it: ./run.sh [files and folders]
#
# Installs what the build needs where that is missing (Debian and Ubuntu). Where there is no display, the
# editor draws its window off the screen and writes a picture of it to build/tavrel-code.png.
set -euo pipefail

root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

require_packages build
build release tavrel-code tavrel-probe

editor=$root/build/release/tavrel-code
if [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; then
    exec "$editor" "$@"
fi

export QT_QPA_PLATFORM=offscreen
for argument in "$@"; do
    case $argument in
        --screenshot | --screenshot=* | --help | --version) exec "$editor" "$@" ;;
    esac
done
picture=$root/build/tavrel-code.png
"$editor" --screenshot "$picture" "$@"
echo "There is no display. A picture of the window: $picture"
