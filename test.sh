#!/usr/bin/env bash
# Builds everything and runs every test: ./test.sh
#
# Engines, data cases and layers; widgets on the offscreen platform; real windows under Xvfb. Installs what
# is missing (Debian and Ubuntu). The last line is the count of tests.
set -euo pipefail

root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

require_packages build test
exec </dev/null  # From here on nothing asks anything.
build release

# In parallel; tests that need a display to themselves say so in their properties.
exec ctest --test-dir "$root/build/release" -j "$(nproc)" --output-on-failure --no-tests=error
