# What building, testing and checking need, and how it gets here. To be sourced.
#
#   require_packages build          what ./run.sh needs
#   require_packages build test     what ./test.sh needs
#   require_packages build test ci  what .ci/run needs
#
# On Debian and Ubuntu missing packages are installed with apt, after saying so. Elsewhere the function
# names what it cannot find, and fails.

build_packages=(
    cmake g++ ninja-build
    qt6-base-dev qt6-svg-dev libicu-dev nlohmann-json3-dev libexpected-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    fonts-dejavu-core git ncurses-bin
)
test_packages=(
    xvfb openbox xdotool x11-utils x11-xkb-utils imagemagick dbus-daemon at-spi2-core
    bash less procps tmux vim
)
ci_packages=(clang-14 clang-format-14 libclang-rt-14-dev)

# The same for other systems: "<what>: <command>" or "<what>: <header>".
build_needs=(
    "CMake 3.25: cmake" "Ninja: ninja" "a C++20 compiler: c++" "Git: git"
    "Qt 6.4 for developers: qmake6" "ICU: unicode/uregex.h" "nlohmann-json 3.11: nlohmann/json.hpp"
    "tl-expected: tl/expected.hpp" "GoogleTest: gmock/gmock.h" "Google Benchmark: benchmark/benchmark.h"
    "ncurses: tic"
)
test_needs=(
    "Xvfb: Xvfb" "Openbox: openbox" "xdotool: xdotool" "xprop: xprop" "setxkbmap: setxkbmap"
    "ImageMagick: import" "D-Bus: dbus-daemon"
    "Bash: bash" "less: less" "procps: top" "tmux: tmux" "Vim: vim" "ncurses: infocmp"
)
ci_needs=("clang 14: clang++-14" "clang-format 14: clang-format-14")

require_packages() {
    if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
        install_missing_packages "$@"
    else
        name_missing_needs "$@"
    fi
}

install_missing_packages() {
    local group wanted=() installed missing=()
    for group in "$@"; do
        local -n packages="${group}_packages"
        wanted+=("${packages[@]}")
    done
    installed=" $(dpkg-query -W -f='${db:Status-Status}:${Package} ' "${wanted[@]}" 2>/dev/null || true)"
    for group in "${wanted[@]}"; do
        [[ $installed == *" installed:$group "* ]] || missing+=("$group")
    done
    ((${#missing[@]})) || return 0

    echo "Installing with apt: ${missing[*]}"
    local as_root=()
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            echo "This needs root, and there is no sudo. As root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
        # Nobody is there to type a password.
        [[ -t 0 ]] || as_root+=(-n)
    fi
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    "${apt[@]}" update </dev/null || echo "apt-get update failed; going on with the lists that are there." >&2
    "${apt[@]}" install -y --no-install-recommends "${missing[@]}" </dev/null
}

name_missing_needs() {
    local group need what missing=()
    for group in "$@"; do
        local -n needs="${group}_needs"
        for need in "${needs[@]}"; do
            what=${need##*: }
            if [[ $what == */* ]]; then
                echo "#include <$what>" | c++ -std=c++20 -E -x c++ - >/dev/null 2>&1 || missing+=("${need%: *}")
            else
                command -v "$what" >/dev/null || missing+=("${need%: *}")
            fi
        done
    done
    ((${#missing[@]})) || return 0
    echo "This is neither Debian nor Ubuntu, so nothing is installed. Not found:" >&2
    printf '  %s\n' "${missing[@]}" >&2
    return 1
}
