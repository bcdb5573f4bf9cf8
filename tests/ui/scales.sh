#!/usr/bin/env bash
# Rows stand on whole pixels of the screen at every scale: equal rows make equal pictures.
set -u
program=$(realpath "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unset DISPLAY WAYLAND_DISPLAY
export HOME=$folder XDG_RUNTIME_DIR=$folder QT_QPA_PLATFORM=offscreen

fail() { echo "FAILED: $1" >&2; exit 1; }

for ((line = 0; line < 24; line++)); do
    printf 'Hxgm|Hxgm|Hxgm\n'
done >"$folder/file.txt"

# The distance of two equal rows in a picture as numbers, or nothing where rows differ.
period='
    NR == 1 { next }
    NR == 2 { width = $1; height = $2; next }
    NR == 3 { next }
    { for (i = 1; i <= NF; i++) { row[int(count / width)] = row[int(count / width)] " " $i; count++ } }
    END {
        for (p = 8; p < height / 4; p++) {
            same = 1
            for (y = 0; y + p < height && same; y++)
                same = row[y] == row[y + p]
            if (same) { print p; exit }
        }
    }'

for scale in 1 1.25 1.5 2; do
    QT_SCALE_FACTOR=$scale timeout 60 "$program" --screenshot "$folder/picture.png" --size 900x600 \
        "$folder/file.txt" >"$folder/log" 2>&1 || fail "no picture at scale $scale"
    # A part of the text that begins and ends somewhere inside of rows.
    area=$(awk -v s="$scale" 'BEGIN { printf "%dx%d+%d+%d", 110 * s, 200 * s, 58 * s, 90 * s }')
    found=$(convert "$folder/picture.png" -crop "$area" +repage -colorspace Gray -depth 8 \
        -compress none pgm:- | awk "$period")
    [[ -n $found ]] || fail "rows differ at scale $scale"
    echo "scale $scale: a row every $found pixels"
    awk -v p="$found" -v s="$scale" 'BEGIN { exit !(p >= 12 * s && p <= 24 * s) }' ||
        fail "a row of $found pixels at scale $scale"
done
