#!/usr/bin/env bash
# A program that reads the screen finds the text of the open file, the tabs and the status line.
source "$(dirname "$0")/harness.sh"
reader=$(realpath "$3")
ui_begin "$@"

file=$ui_folder/note.txt
printf 'first line\nsecond line\n' >"$file"
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
ui_open "$file"

# reads PATTERN: whether the other program finds a line like that.
reads() {
    "$reader" tavrel-code >"$ui_home/read" 2>&1 && grep -qP "$1" "$ui_home/read"
}

ui_wait "the text is read from outside" reads '^text\tnote.txt\tfirst line\\nsecond line\\n$'
ui_wait "the tab has its name" reads '^page tab\tnote.txt\t'
ui_wait "the close mark has its name" reads '^(push )?button\tClose note.txt\t'
ui_wait "the status line says what it shows" reads '^status bar\tText\t'

ui_type 'new '
ui_wait "what is typed is read" reads '^text\t• note.txt\tnew first line\\nsecond line\\n$'
