#pragma once

#include "editor/dispatch/KeyMapEntry.h"

#include <array>
#include <string_view>
#include <vector>

namespace tavrel {

/// A binding of the default key map, as the settings text writes it.
struct DefaultBinding {
    std::string_view chord;
    std::string_view value;  // CSON.
};

/// The section `keys` of the default settings, in the order of its lines.
inline constexpr std::array defaultKeyMap{
    DefaultBinding{"left", "{moveCursor offset: -1}"},
    DefaultBinding{"right", "{moveCursor offset: 1}"},
    DefaultBinding{"backspace", "{erase}"},
    DefaultBinding{"opt+backspace", "{eraseWord}"},
    DefaultBinding{"cmd+backspace", "{eraseFullWord}"},
    DefaultBinding{"opt+left", "{skipWord forward: false}"},
    DefaultBinding{"opt+right", "{skipWord}"},
    DefaultBinding{"cmd+c", "{copy}"},
    DefaultBinding{"cmd+v", "{paste}"},
    DefaultBinding{"cmd+x", "{cut}"},
    DefaultBinding{"cmd+d", "{duplicate}"},
    DefaultBinding{"pageup", "{page down: false}"},
    DefaultBinding{"pagedown", "{page}"},
    DefaultBinding{"up", "{line down: false}"},
    DefaultBinding{"down", "{line}"},
    DefaultBinding{"return", "{newLine}"},
    DefaultBinding{"cmd+[", "{unindent}"},
    DefaultBinding{"cmd+]", "{indent}"},
    DefaultBinding{"tab", "{autocomplete}"},
    DefaultBinding{"ctrl+a", "{lineBegin}"},
    DefaultBinding{"ctrl+e", "{lineEnd}"},
    DefaultBinding{"f5", "{setMarker}"},
    DefaultBinding{"f6", "{selectFromMarker}"},
    DefaultBinding{"ctrl+shift+f6", "[{selectFromMarker} {copy} {deselect}]"},
    DefaultBinding{"ctrl+shift+f7", "{timestamp}"},
    DefaultBinding{"escape", "{deselect}"},
    DefaultBinding{"cmd+z", "{undo}"},
    DefaultBinding{"cmd+y", "{redo}"},
    DefaultBinding{"f8", "{selectWord}"},
    DefaultBinding{"shift+f8", "{selectWordAll}"},
    DefaultBinding{"ctrl+shift+a", "{camelCase words: 2}"},
    DefaultBinding{"ctrl+shift+s", "{camelCase words: 3}"},
    DefaultBinding{"ctrl+shift+b", "{camelCase words: 4}"},
    DefaultBinding{"ctrl+shift+,", "{camelCase words: 5}"},
    DefaultBinding{"ctrl+shift+z", "{typeCase words: 2}"},
    DefaultBinding{"ctrl+shift+x", "{typeCase words: 3}"},
    DefaultBinding{"ctrl+shift+c", "{typeCase words: 4}"},
    DefaultBinding{"ctrl+shift+v", "{typeCase words: 5}"},
    DefaultBinding{"ctrl+shift+g", "{upperChar}"},
    DefaultBinding{"ctrl+shift+h", "{lowerChar}"},
    DefaultBinding{"ctrl+shift+i", "{upperWord}"},
    DefaultBinding{"ctrl+shift+k", "{allLowerWord}"},
    DefaultBinding{"ctrl+shift+j", "{allUpperWord}"},
    DefaultBinding{"ctrl+shift+f12", "{strip}"},
    DefaultBinding{"home", "{setCursor cursor: 0}"},
    DefaultBinding{"end", "{setCursor cursor: -1}"},
    DefaultBinding{"cmd+/", "{comment}"},
    DefaultBinding{"cmd+a", "{selectAll}"},
    DefaultBinding{"cmd+f", "{find}"},
    DefaultBinding{"cmd+g", "{findAgain}"},
    DefaultBinding{"cmd+r", "{replace}"},
    DefaultBinding{"cmd+l", "{goto}"},
    DefaultBinding{"f7", "{nextGitChange}"},
    DefaultBinding{"cmd+shift+r", "{refreshTree}"},
    DefaultBinding{"cmd+t", "{newTerminalTab}"},
    DefaultBinding{"cmd+shift+w", "{closeFile}"},
    DefaultBinding{"cmd+w", "{closeWindow}"},
    DefaultBinding{"cmd+shift+]", "{nextView}"},
    DefaultBinding{"cmd+shift+[", "{previousView}"},
    DefaultBinding{"cmd+1", "{editor1}"},
    DefaultBinding{"cmd+2", "{editor2}"},
    DefaultBinding{"cmd+3", "{editor3}"},
    DefaultBinding{"cmd+4", "{editor4}"},
};

/// The same with the values parsed, ready for `CommandDispatcher::load`.
std::vector<KeyMapEntry> defaultKeyMapEntries();

}  // namespace tavrel
