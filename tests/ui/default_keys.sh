#!/usr/bin/env bash
# A walk through the bindings that the program comes with, each in the window: Ctrl stands for "cmd", Super for
# "ctrl", Alt for "opt". What the window manager keeps for itself (Super and D, E) is left out.
source "$(dirname "$0")/harness.sh"
ui_begin "$@"

file=$ui_folder/note.txt
: >"$file"
ui_open "$file"

# row TEXT KEYS EXPECTED: types the text into an empty file, presses the keys, and looks at what is saved.
row() {
    local keys
    read -ra keys <<<"$2"
    ui_keys Escape Escape ctrl+a BackSpace
    [[ -n $1 ]] && ui_type "$1"
    ui_keys "${keys[@]}" ctrl+s
    ui_wait "'$1' and $2 make '$3'" ui_file_is "$file" "$3"
}

row 'ab' 'Left x' 'axb'
row 'ab' 'Home Right x' 'axb'
row 'ab' 'BackSpace' 'a'
row 'fooBar' 'alt+BackSpace' 'foo'
row 'one two' 'ctrl+BackSpace' 'one '
row 'one two' 'alt+Left x' 'one xtwo'
row 'one two' 'Home alt+Right x' 'onex two'
row 'ab' 'ctrl+a ctrl+c End ctrl+v' 'abab'
row 'ab' 'ctrl+a ctrl+x y' 'y'
row 'ab' 'ctrl+a ctrl+d' 'abab'
row 'ab' 'Return c' $'ab\nc'
row 'ab' 'Return c Up x' $'axb\nc'
row 'ab' 'Return c Home Down x' $'ab\nxc'
row 'ab' 'Return c Prior x' $'xab\nc'
row 'ab' 'Return c Home Next x' $'ab\ncx'
row 'ab' 'ctrl+bracketright' '  ab'
row 'ab' 'ctrl+bracketright ctrl+bracketleft' 'ab'
row '  ab' 'super+a x' '  xab'
row 'abc abd' 'Home F5 Right Right F6 x' 'xc abd'
row 'abc' 'Home F5 Right super+shift+F6 End ctrl+v' 'abca'
row 'ab' 'ctrl+a Escape x' 'xab'
row 'ab' 'ctrl+z ctrl+y' 'ab'
row 'ab ab' 'Home F8 F8 x' 'abx abx'
row 'ab ab ab' 'Home shift+F8 x' 'abx abx abx'
row 'one two' 'super+shift+a' 'oneTwo'
row 'one two six' 'super+shift+s' 'oneTwoSix'
row 'a bb cc dd' 'super+shift+b' 'aBbCcDd'
row 'a bb cc dd ee' 'super+shift+comma' 'aBbCcDdEe'
row 'one two' 'super+shift+z' 'OneTwo'
row 'one two six' 'super+shift+x' 'OneTwoSix'
row 'a bb cc dd' 'super+shift+c' 'ABbCcDd'
row 'a bb cc dd ee' 'super+shift+v' 'ABbCcDdEe'
row 'one' 'Home super+shift+g' 'One'
row 'ONE' 'Home super+shift+h' 'oNE'
row 'one' 'super+shift+i' 'One'
row 'ONE' 'super+shift+k' 'one'
row 'one' 'super+shift+j' 'ONE'
row 'a   b' 'Left Left super+shift+F12' 'a b'
row 'ab' 'Home x End y' 'xaby'
row 'word wo' 'Tab Return' 'word word'

# Tabs and columns.
row 'ab' 'ctrl+shift+bracketright ctrl+shift+bracketleft ctrl+1 x' 'abx'
row 'ab' 'ctrl+2 ctrl+3 ctrl+4 x' 'abx'
ui_keys ctrl+w
ui_wait "the window closes" ui_program_is_gone
